#pragma once

#include "core/runtime/Clock.h"

namespace quillmar {

// A one-shot flag that one thread raises and another waits for. Made by the Runtime so that a wait on
// virtual time moves the virtual clock (and runs the work that falls due) instead of blocking.
class Signal {
public:
    virtual ~Signal() = default;

    virtual void raise() = 0;
    virtual bool isRaised() const = 0;

    // Waits at most `timeout` (uptime clock); true when the flag was raised in time.
    virtual bool waitFor(Duration timeout) = 0;

    // Waits until the flag is raised.
    virtual void wait() = 0;
};

} // namespace quillmar
