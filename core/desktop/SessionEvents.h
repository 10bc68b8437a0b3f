#pragma once

#include <functional>

namespace quillmar {

// The moments the user leaves the session, after which a clipboard left filled could be read by someone else.
enum class SessionEvent {
    systemWillSleep,
    displayDidSleep,
    screenLocked,
};

// The system's sleep and lock notifications. Main thread only; the handler is called on the main thread.
class SessionEvents {
public:
    virtual ~SessionEvents() = default;

    // Replaces the handler; notifications arrive until stopObserving.
    virtual void startObserving(std::function<void(SessionEvent)> handler) = 0;
    virtual void stopObserving() = 0;
};

} // namespace quillmar
