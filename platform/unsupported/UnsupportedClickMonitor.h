#pragma once

#include "core/switcher/ClickMonitor.h"

namespace quillmar {

// No global mouse monitor on this system: a session then ends only by its keys.
class UnsupportedClickMonitor final : public ClickMonitor {
public:
    bool start(std::function<void()> onClick) override;
    void stop() override;
};

} // namespace quillmar
