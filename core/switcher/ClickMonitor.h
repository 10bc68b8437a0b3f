#pragma once

#include <functional>

namespace quillmar {

// Watches the user's mouse clicks anywhere outside the application's own windows. Main thread.
class ClickMonitor {
public:
    virtual ~ClickMonitor() = default;

    // Calls `onClick` on the main queue for every click outside the application's windows until `stop`.
    // Replaces a monitor already running. False when the system offers no such monitor.
    virtual bool start(std::function<void()> onClick) = 0;
    // No effect when not running; `onClick` is not called afterwards.
    virtual void stop() = 0;
};

} // namespace quillmar
