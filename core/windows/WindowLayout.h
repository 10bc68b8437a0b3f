#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "core/hotkeys/ShortcutAction.h"
#include "core/windows/Geometry.h"

namespace quillmar {

// The sixteen fixed layouts, in their case order: the order of `allWindowLayouts`, and the index that snap
// zones carry (with `noLayoutIndex` for no zone). The raw value is the persistent identifier.
enum class WindowLayout : unsigned char {
    leftHalf,
    rightHalf,
    topHalf,
    bottomHalf,
    topLeft,
    topRight,
    bottomLeft,
    bottomRight,
    firstThird,
    centerThird,
    lastThird,
    firstTwoThirds,
    lastTwoThirds,
    maximize,
    almostMaximize,
    center,
};

inline constexpr std::size_t windowLayoutCount = 16;
// Stands for no layout where a layout index is stored (a drag's zone).
inline constexpr std::size_t noLayoutIndex = 16;

std::span<const WindowLayout, windowLayoutCount> allWindowLayouts();

std::string_view rawValue(WindowLayout layout);
// The system symbol name shown in the heads-up display.
std::string_view symbol(WindowLayout layout);
// None for a string that names no layout.
std::optional<WindowLayout> windowLayoutFromRawValue(std::string_view raw);

// The global shortcut action that applies the layout; its title is what the heads-up display shows.
ShortcutAction shortcutAction(WindowLayout layout);
// The layout an action applies; none for actions that are not layouts (restore, the display moves...).
std::optional<WindowLayout> windowLayout(ShortcutAction action);

// The layouts whose frame touches the top of the area: a drag into them may bump the top of the screen.
bool isTopEdgeLayout(WindowLayout layout);

// The frame of `layout` within `area` (a screen's visible frame, bottom-left y-up points). `current` is the
// window's present frame in the same space (only its size matters, for `center`); `gap` is the space in
// points kept between tiles and around the area's edge. With a gap of 0 the halves and thirds tile the
// area exactly. A gap too large for the area gives empty or negative sizes, which callers treat as empty.
Rect layoutFrame(WindowLayout layout, const Rect& area, const Rect& current, double gap);

} // namespace quillmar
