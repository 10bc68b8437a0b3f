#pragma once

#include "core/hotkeys/ShortcutAction.h"

namespace quillmar {

// Moves the front window into a layout.
class WindowLayoutService {
public:
    virtual ~WindowLayoutService() = default;

    // `action` is one of the window-layout shortcut actions (leftHalf ... previousDisplay).
    virtual void applyLayout(ShortcutAction action) = 0;
};

} // namespace quillmar
