#pragma once

#include <cstdint>

#include "core/desktop/InputEvent.h"
#include "core/eventtap/EventTapSink.h"

namespace quillmar {

// The system's event taps and synthetic events. There is at most one tap of each kind. Tap operations
// are called only on the worker's queue; postEvent and isAccessibilityTrusted from any thread.
class EventTapSource {
public:
    virtual ~EventTapSource() = default;

    // Installs a session tap of `kind` at the head of the event stream for the event types whose bits are set
    // in `mask` (bit n: type n), delivering to `sink` on the calling thread, enabled. False when the system
    // refuses it (most often because Accessibility is not trusted). No tap of `kind` may be installed.
    virtual bool createTap(TapKind kind, std::uint64_t mask, EventTapSink& sink) = 0;

    // Disables and removes the tap of `kind`; after it returns, its sink is not called again. No effect
    // when none is installed.
    virtual void removeTap(TapKind kind) = 0;

    // Switches the installed tap of `kind` on again after the system disabled it. No effect when none is
    // installed.
    virtual void enableTap(TapKind kind) = 0;

    // Posts `event` into the session event stream, its sourceUserData included. False when it could not.
    virtual bool postEvent(const InputEvent& event) = 0;

    // Whether the user lets this process observe and post input events (Accessibility).
    virtual bool isAccessibilityTrusted() const = 0;
};

} // namespace quillmar
