#pragma once

#include <optional>

#include "core/desktop/InputEvent.h"

namespace quillmar {

// The two taps the application keeps: an active filter, which may change or swallow events, and a
// listen-only one, which only observes them and never holds the event stream up.
enum class TapKind { filter, listenOnly };

// Why the system switched a tap off: its callback took too long, or the user's input (secure event
// input, for example) required it.
enum class TapDisableReason { timeout, userInput };

// Where an EventTapSource hands its events. Calls arrive on the thread that created the tap (the worker's
// queue), never on the main thread, and stop once the tap is removed.
class EventTapSink {
public:
    virtual ~EventTapSink() = default;

    // An event through the filter tap: returns it, possibly changed, to let it on, or nothing to swallow it.
    // The system blocks the event stream until this returns.
    virtual std::optional<InputEvent> filterEvent(const InputEvent& event) = 0;

    // An event seen by the listen-only tap; it has already gone on.
    virtual void listenEvent(const InputEvent& event) = 0;

    // The system has switched the tap of `kind` off; it stays installed but delivers nothing until enabled.
    virtual void tapDisabled(TapKind kind, TapDisableReason reason) = 0;
};

} // namespace quillmar
