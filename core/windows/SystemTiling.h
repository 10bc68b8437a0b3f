#pragma once

#include "core/windows/SystemPreferences.h"

namespace quillmar {

// The system's own tiling of windows dragged to the screen's edges, which competes with drag snapping.
class SystemTiling final {
public:
    // Whether the system tiles windows dragged to an edge: never while Spaces span displays; otherwise
    // unless edge tiling is off, and then only if top-edge tiling is still on. Missing keys read as on.
    static bool edgeTilingIsOn(const SystemPreferences& preferences);
};

} // namespace quillmar
