#pragma once

#include "core/windows/Geometry.h"

namespace quillmar {

// One display. Both rectangles are bottom-left (y up) in global points: `frame` is the whole display,
// `visibleFrame` leaves out the menu bar and the Dock.
struct ScreenInfo {
    Rect frame;
    Rect visibleFrame;

    friend bool operator==(const ScreenInfo&, const ScreenInfo&) = default;
};

} // namespace quillmar
