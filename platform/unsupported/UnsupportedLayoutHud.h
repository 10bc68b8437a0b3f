#pragma once

#include "core/windows/LayoutHud.h"

namespace quillmar {

// The heads-up display on a system without a backend: nothing is shown.
class UnsupportedLayoutHud final : public LayoutHud {
public:
    void show(std::string_view title, std::string_view symbol) override;
};

} // namespace quillmar
