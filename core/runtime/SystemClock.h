#pragma once

#include "core/runtime/Clock.h"

namespace quillmar {

class SystemClock final : public Clock {
public:
    WallTime now() const override;
    Duration uptime() const override;
    void sleepFor(Duration duration) override;
};

} // namespace quillmar
