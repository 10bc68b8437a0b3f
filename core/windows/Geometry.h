#pragma once

#include <algorithm>
#include <cmath>

namespace quillmar {

// Points in the window system's units. Whether y grows up or down depends on the space a value belongs to:
// window frames from the window list and the accessibility layer are top-left (y down), screen frames and
// layout geometry are bottom-left (y up); each function says which it takes.
struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    Point origin() const { return { x, y }; }
    Size size() const { return { width, height }; }
    double minX() const { return x; }
    double minY() const { return y; }
    double maxX() const { return x + width; }
    double maxY() const { return y + height; }
    double midX() const { return x + width / 2; }
    double midY() const { return y + height / 2; }
    bool isEmpty() const { return width <= 0 || height <= 0; }

    // Half-open on the far edges, like the platform's mouse-in-rect test.
    bool contains(Point p) const { return p.x >= minX() && p.x < maxX() && p.y >= minY() && p.y < maxY(); }

    Rect insetBy(double dx, double dy) const { return { x + dx, y + dy, width - 2 * dx, height - 2 * dy }; }

    // The overlap of two rectangles; an empty rectangle (zero size) when they do not overlap.
    Rect intersection(const Rect& other) const
    {
        double left = std::max(minX(), other.minX());
        double right = std::min(maxX(), other.maxX());
        double bottom = std::max(minY(), other.minY());
        double top = std::min(maxY(), other.maxY());
        if (right <= left || top <= bottom)
            return {};
        return { left, bottom, right - left, top - bottom };
    }

    double area() const { return isEmpty() ? 0 : width * height; }

    // The same rectangle in the other vertical convention, flipped about a line `mainHeight` points tall:
    // y' = mainHeight - y - height. The conversion is its own inverse.
    Rect flipped(double mainHeight) const { return { x, mainHeight - y - height, width, height }; }

    friend bool operator==(const Rect&, const Rect&) = default;
};

// A point in the other vertical convention: y' = mainHeight - y (a point has no height to account for).
inline Point flipped(Point p, double mainHeight)
{
    return { p.x, mainHeight - p.y };
}

} // namespace quillmar
