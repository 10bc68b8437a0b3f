#pragma once

#include "core/windows/Geometry.h"

namespace quillmar {

// Which edges a resize drag moves: -1 the left (top) edge, +1 the right (bottom) edge, 0 neither.
struct ResizeEdges {
    int horizontal = 0;
    int vertical = 0;

    friend bool operator==(const ResizeEdges&, const ResizeEdges&) = default;
};

// The rules that read a modifier drag.
class DragClassifier final {
public:
    // The edges a resize grabbed at `pointer` moves, from the cell of a 3 × 3 grid over `frame` (both
    // top-left, y down). The outer cells take their sides and corners; the centre cell takes the nearest edge.
    static ResizeEdges resizeEdges(Point pointer, const Rect& frame);
};

} // namespace quillmar
