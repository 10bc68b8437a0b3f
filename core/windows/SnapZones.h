#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "core/windows/Geometry.h"
#include "core/windows/ScreenInfo.h"
#include "core/windows/WindowLayout.h"

namespace quillmar {

// The pure geometry of drag snapping: where on a screen's edge the pointer is, and which layout that means.
// Everything here is bottom-left (y up) global points.
class SnapZones {
public:
    // What a drag to the top edge does.
    enum class TopEdge : std::uint8_t { maximize, thirds };
    // What a drag to the bottom edge does.
    enum class BottomEdge : std::uint8_t { off, bottomHalf, thirds };

    // The enabled zones, four one-byte fields in this order.
    struct Config {
        bool sides = true;   // left and right edges snap to halves
        bool corners = true; // corners snap to quarters
        TopEdge top = TopEdge::maximize;
        BottomEdge bottom = BottomEdge::off;

        friend bool operator==(const Config&, const Config&) = default;
    };

    // Which edges of a screen's frame touch another display; top is the maxY edge.
    struct SharedEdges {
        bool left = false;
        bool right = false;
        bool top = false;
        bool bottom = false;

        friend bool operator==(const SharedEdges&, const SharedEdges&) = default;
    };

    // A snap target: the layout and the index of its screen in the list `zone` was given.
    struct Zone {
        WindowLayout layout;
        std::size_t screen;

        friend bool operator==(const Zone&, const Zone&) = default;
    };

    // How close the pointer must come to an edge, in points. Left and bottom take 5, right and top 6: the
    // pointer can reach minX and minY but stops a point short of maxX and maxY.
    static constexpr double leftReach = 5.0;
    static constexpr double rightReach = 6.0;
    static constexpr double topReach = 6.0;
    static constexpr double bottomReach = 5.0;
    // A pointer at an edge this close to the perpendicular edge is in the corner.
    static constexpr double cornerReach = 24.0;
    // Below this speed (points per second) the pointer may rest on an edge shared with another display;
    // faster, it is carrying the window over to that display.
    static constexpr double slowSpeed = 400.0;
    // Two edges within this distance touch.
    static constexpr double edgeTolerance = 1.0;

    // The thirds column of `frame` that `x` falls in: firstThird, centerThird or lastThird. Outside the
    // frame the nearest column.
    static WindowLayout third(double x, const Rect& frame);

    // The edges of `frame` that touch another of `frames` (which may include `frame` itself; an equal frame
    // is passed over), with an overlap along the edge.
    static SharedEdges sharedEdges(const Rect& frame, std::span<const Rect> frames);

    // The zone under `pointer` among `screens`, for a pointer moving at `speed` points per second; none
    // outside every screen's frame or away from the enabled edges.
    static std::optional<Zone> zone(Point pointer, std::span<const ScreenInfo> screens, double speed,
        const Config& config);
};

std::string_view rawValue(SnapZones::TopEdge edge);
std::string_view rawValue(SnapZones::BottomEdge edge);
std::optional<SnapZones::TopEdge> topEdgeFromRawValue(std::string_view raw);
std::optional<SnapZones::BottomEdge> bottomEdgeFromRawValue(std::string_view raw);

} // namespace quillmar
