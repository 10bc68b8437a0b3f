#pragma once

#include "core/desktop/InputEvent.h"

namespace quillmar {

enum class MouseButton { left, right };

// Synthetic pointer events and the buttons' state. Any thread.
class MouseEvents {
public:
    virtual ~MouseEvents() = default;

    // Whether `button` is held now, as the combined session state sees it.
    virtual bool isButtonDown(MouseButton button) const = 0;

    // Posts `event` at the session tap, its sourceUserData included. False when the system refused it.
    virtual bool post(const InputEvent& event) = 0;

    // Moves the pointer to `location` (top-left global points) without posting an event.
    virtual void warpPointer(InputEvent::Location location) = 0;
};

} // namespace quillmar
