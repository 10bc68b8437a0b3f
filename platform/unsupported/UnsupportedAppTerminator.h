#pragma once

#include "core/switcher/AppTerminator.h"

namespace quillmar {

// Applications can't be asked to quit on this system: every request fails, and every app reads as running.
class UnsupportedAppTerminator final : public AppTerminator {
public:
    bool terminate(std::int32_t pid) override;
    bool isRunning(std::int32_t pid) const override;
};

} // namespace quillmar
