#pragma once

#include "core/windows/Geometry.h"
#include "core/windows/ScreenInfo.h"

namespace quillmar {

// The outline that previews where a dragged window will land. Main thread.
class SnapOverlay {
public:
    virtual ~SnapOverlay() = default;

    // Shows (or moves) the outline at `frame`, bottom-left (y up) global points, on `screen`.
    virtual void show(const Rect& frame, const ScreenInfo& screen) = 0;

    // Fades the outline out; nothing when it is not shown.
    virtual void hide() = 0;
};

} // namespace quillmar
