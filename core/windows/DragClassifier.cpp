#include "core/windows/DragClassifier.h"

#include <algorithm>

namespace quillmar {

ResizeEdges DragClassifier::resizeEdges(Point p, const Rect& frame)
{
    constexpr double lower = 1.0 / 3.0;
    constexpr double upper = 2.0 / 3.0;
    double rx = (p.x - frame.minX()) / std::max(frame.width, 1.0);
    double ry = frame.height > 1 ? (p.y - frame.minY()) / frame.height : 0.5;
    int vertical = ry < lower ? -1 : ry > upper ? 1 : 0;

    if (rx < lower)
        return { -1, vertical };
    if (rx > upper)
        return { 1, vertical };
    if (vertical != 0)
        return { 0, vertical };

    double nearestSide = std::min(rx, 1 - rx);
    if (ry < nearestSide)
        return { 0, -1 };
    if (1 - ry < nearestSide)
        return { 0, 1 };
    return { 1 - rx < rx ? 1 : -1, 0 };
}

} // namespace quillmar
