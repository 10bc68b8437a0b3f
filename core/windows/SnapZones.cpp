#include "core/windows/SnapZones.h"

#include <cmath>
#include <vector>

#include "core/base/RawValueTable.h"

namespace quillmar {

static_assert(sizeof(SnapZones::Config) == 4);

WindowLayout SnapZones::third(double x, const Rect& frame)
{
    double column = frame.width > 0 ? std::trunc((x - frame.minX()) / (frame.width / 3)) : 0;
    if (!(column >= 1))
        return WindowLayout::firstThird;
    if (column >= 2)
        return WindowLayout::lastThird;
    return WindowLayout::centerThird;
}

SnapZones::SharedEdges SnapZones::sharedEdges(const Rect& frame, std::span<const Rect> frames)
{
    SharedEdges shared;
    auto near = [](double a, double b) { return std::abs(a - b) <= edgeTolerance; };
    for (const auto& other : frames) {
        if (other == frame)
            continue;
        bool overlapsVertically = std::min(frame.maxY(), other.maxY()) > std::max(frame.minY(), other.minY());
        bool overlapsHorizontally = std::min(frame.maxX(), other.maxX()) > std::max(frame.minX(), other.minX());
        shared.left |= near(other.maxX(), frame.minX()) && overlapsVertically;
        shared.right |= near(other.minX(), frame.maxX()) && overlapsVertically;
        shared.top |= near(other.minY(), frame.maxY()) && overlapsHorizontally;
        shared.bottom |= near(other.maxY(), frame.minY()) && overlapsHorizontally;
    }
    return shared;
}

std::optional<SnapZones::Zone> SnapZones::zone(Point p, std::span<const ScreenInfo> screens, double speed,
    const Config& config)
{
    std::size_t index = 0;
    while (index < screens.size() && !screens[index].frame.contains(p))
        ++index;
    if (index == screens.size())
        return std::nullopt;
    const Rect& f = screens[index].frame;

    std::vector<Rect> frames;
    frames.reserve(screens.size());
    for (const auto& screen : screens)
        frames.push_back(screen.frame);
    auto shared = sharedEdges(f, frames);
    bool slow = speed < slowSpeed;

    // An edge shared with another display counts only while the pointer is slow: a quick drag is carrying
    // the window across.
    bool left = p.x - f.minX() <= leftReach && (!shared.left || slow);
    bool right = f.maxX() - p.x <= rightReach && (!shared.right || slow);
    bool top = f.maxY() - p.y <= topReach && (!shared.top || slow);
    bool bottomContact = p.y - f.minY() <= bottomReach;
    bool bottomForCorners = bottomContact && (!shared.bottom || slow);

    auto at = [&](WindowLayout layout) { return Zone { layout, index }; };

    if (config.corners) {
        bool nearTop = f.maxY() - p.y <= cornerReach;
        bool nearBottom = p.y - f.minY() <= cornerReach;
        bool nearLeft = p.x - f.minX() <= cornerReach;
        bool nearRight = f.maxX() - p.x <= cornerReach;
        if ((left && nearTop) || (top && nearLeft))
            return at(WindowLayout::topLeft);
        if ((right && nearTop) || (top && nearRight))
            return at(WindowLayout::topRight);
        if ((left && nearBottom) || (bottomForCorners && nearLeft))
            return at(WindowLayout::bottomLeft);
        if ((right && nearBottom) || (bottomForCorners && nearRight))
            return at(WindowLayout::bottomRight);
    }
    if (config.sides) {
        if (left)
            return at(WindowLayout::leftHalf);
        if (right)
            return at(WindowLayout::rightHalf);
    }
    if (top)
        return at(config.top == TopEdge::maximize ? WindowLayout::maximize : third(p.x, f));
    if (bottomContact) {
        switch (config.bottom) {
        case BottomEdge::off:
            return std::nullopt;
        case BottomEdge::bottomHalf:
            return at(WindowLayout::bottomHalf);
        case BottomEdge::thirds:
            return at(third(p.x, f));
        }
    }
    return std::nullopt;
}

namespace {

// The first rows are what a value outside the enum reads as.
constexpr auto topEdges = rawValueTable<SnapZones::TopEdge>({
    { SnapZones::TopEdge::maximize, "maximize" },
    { SnapZones::TopEdge::thirds, "thirds" },
});

constexpr auto bottomEdges = rawValueTable<SnapZones::BottomEdge>({
    { SnapZones::BottomEdge::off, "off" },
    { SnapZones::BottomEdge::bottomHalf, "bottomHalf" },
    { SnapZones::BottomEdge::thirds, "thirds" },
});

} // namespace

std::string_view rawValue(SnapZones::TopEdge edge)
{
    return topEdges.rawValue(edge);
}

std::string_view rawValue(SnapZones::BottomEdge edge)
{
    return bottomEdges.rawValue(edge);
}

std::optional<SnapZones::TopEdge> topEdgeFromRawValue(std::string_view raw)
{
    return topEdges.fromRawValue(raw);
}

std::optional<SnapZones::BottomEdge> bottomEdgeFromRawValue(std::string_view raw)
{
    return bottomEdges.fromRawValue(raw);
}

} // namespace quillmar
