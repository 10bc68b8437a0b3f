#pragma once

#include "core/windows/Haptics.h"

namespace quillmar {

// Haptics on a system without a backend: nothing happens.
class UnsupportedHaptics final : public Haptics {
public:
    void performAlignment() override;
};

} // namespace quillmar
