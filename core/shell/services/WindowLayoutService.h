#pragma once

#include "core/hotkeys/ShortcutAction.h"

namespace quillmar {

// Moves the front window into a layout. The base does nothing.
class WindowLayoutService {
public:
    virtual ~WindowLayoutService() = default;

    // `action` is one of the window-layout shortcut actions (leftHalf ... previousDisplay).
    virtual void applyLayout(ShortcutAction) { }
};

} // namespace quillmar
