#include "core/windows/WindowLayout.h"

#include <algorithm>

namespace quillmar {

namespace {

struct LayoutInfo {
    std::string_view raw;
    std::string_view symbol;
    ShortcutAction action;
};

constexpr std::array<LayoutInfo, windowLayoutCount> layoutTable { {
    { "leftHalf", "rectangle.lefthalf.filled", ShortcutAction::leftHalf },
    { "rightHalf", "rectangle.righthalf.filled", ShortcutAction::rightHalf },
    { "topHalf", "rectangle.tophalf.filled", ShortcutAction::topHalf },
    { "bottomHalf", "rectangle.bottomhalf.filled", ShortcutAction::bottomHalf },
    { "topLeft", "rectangle.inset.topleft.filled", ShortcutAction::topLeft },
    { "topRight", "rectangle.inset.topright.filled", ShortcutAction::topRight },
    { "bottomLeft", "rectangle.inset.bottomleft.filled", ShortcutAction::bottomLeft },
    { "bottomRight", "rectangle.inset.bottomright.filled", ShortcutAction::bottomRight },
    { "firstThird", "rectangle.leadingthird.inset.filled", ShortcutAction::firstThird },
    { "centerThird", "rectangle.center.inset.filled", ShortcutAction::centerThird },
    { "lastThird", "rectangle.trailingthird.inset.filled", ShortcutAction::lastThird },
    { "firstTwoThirds", "rectangle.split.3x1", ShortcutAction::firstTwoThirds },
    { "lastTwoThirds", "rectangle.split.3x1", ShortcutAction::lastTwoThirds },
    { "maximize", "rectangle.inset.filled", ShortcutAction::maximize },
    { "almostMaximize", "rectangle.center.inset.filled", ShortcutAction::almostMaximize },
    { "center", "rectangle.center.inset.filled", ShortcutAction::center },
} };

constexpr std::array<WindowLayout, windowLayoutCount> layouts { WindowLayout::leftHalf, WindowLayout::rightHalf,
    WindowLayout::topHalf, WindowLayout::bottomHalf, WindowLayout::topLeft, WindowLayout::topRight,
    WindowLayout::bottomLeft, WindowLayout::bottomRight, WindowLayout::firstThird, WindowLayout::centerThird,
    WindowLayout::lastThird, WindowLayout::firstTwoThirds, WindowLayout::lastTwoThirds, WindowLayout::maximize,
    WindowLayout::almostMaximize, WindowLayout::center };

const LayoutInfo& info(WindowLayout layout)
{
    return layoutTable[static_cast<std::size_t>(layout)];
}

} // namespace

std::span<const WindowLayout, windowLayoutCount> allWindowLayouts()
{
    return layouts;
}

std::string_view rawValue(WindowLayout layout)
{
    return info(layout).raw;
}

std::string_view symbol(WindowLayout layout)
{
    return info(layout).symbol;
}

std::optional<WindowLayout> windowLayoutFromRawValue(std::string_view raw)
{
    for (auto layout : layouts) {
        if (info(layout).raw == raw)
            return layout;
    }
    return std::nullopt;
}

ShortcutAction shortcutAction(WindowLayout layout)
{
    return info(layout).action;
}

std::optional<WindowLayout> windowLayout(ShortcutAction action)
{
    for (auto layout : layouts) {
        if (info(layout).action == action)
            return layout;
    }
    return std::nullopt;
}

bool isTopEdgeLayout(WindowLayout layout)
{
    switch (layout) {
    case WindowLayout::topLeft:
    case WindowLayout::topRight:
    case WindowLayout::firstThird:
    case WindowLayout::centerThird:
    case WindowLayout::lastThird:
    case WindowLayout::maximize:
        return true;
    default:
        return false;
    }
}

Rect layoutFrame(WindowLayout layout, const Rect& area, const Rect& current, double gap)
{
    Rect r = area.insetBy(gap, gap);
    double halfW = (r.width - gap) * 0.5;
    double halfH = (r.height - gap) * 0.5;
    double thirdW = (r.width - 2 * gap) / 3;

    auto centred = [&](double w, double h) { return Rect { r.midX() - w / 2, r.midY() - h / 2, w, h }; };

    switch (layout) {
    case WindowLayout::leftHalf:
        return { r.minX(), r.minY(), halfW, r.height };
    case WindowLayout::rightHalf:
        return { r.maxX() - halfW, r.minY(), halfW, r.height };
    case WindowLayout::topHalf:
        return { r.minX(), r.maxY() - halfH, r.width, halfH };
    case WindowLayout::bottomHalf:
        return { r.minX(), r.minY(), r.width, halfH };
    case WindowLayout::topLeft:
        return { r.minX(), r.maxY() - halfH, halfW, halfH };
    case WindowLayout::topRight:
        return { r.maxX() - halfW, r.maxY() - halfH, halfW, halfH };
    case WindowLayout::bottomLeft:
        return { r.minX(), r.minY(), halfW, halfH };
    case WindowLayout::bottomRight:
        return { r.maxX() - halfW, r.minY(), halfW, halfH };
    case WindowLayout::firstThird:
        return { r.minX(), r.minY(), thirdW, r.height };
    case WindowLayout::centerThird:
        return { r.minX() + thirdW + gap, r.minY(), thirdW, r.height };
    case WindowLayout::lastThird:
        return { r.maxX() - thirdW, r.minY(), thirdW, r.height };
    case WindowLayout::firstTwoThirds:
        return { r.minX(), r.minY(), 2 * thirdW + gap, r.height };
    case WindowLayout::lastTwoThirds:
        return { r.maxX() - 2 * thirdW - gap, r.minY(), 2 * thirdW + gap, r.height };
    case WindowLayout::maximize:
        return r;
    case WindowLayout::almostMaximize:
        return centred(r.width * 0.9, r.height * 0.9);
    case WindowLayout::center:
        // Never enlarges: a window smaller than the area keeps its size and is only centred.
        return centred(std::min(current.width, r.width), std::min(current.height, r.height));
    }
    return r;
}

} // namespace quillmar
