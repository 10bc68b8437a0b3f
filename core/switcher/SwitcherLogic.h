#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/switcher/SwitcherAction.h"
#include "core/switcher/SwitcherGroup.h"
#include "core/switcher/SwitcherItem.h"
#include "core/switcher/SwitcherOptions.h"
#include "core/windows/AppSnapshot.h"
#include "core/windows/Geometry.h"
#include "core/windows/WindowEntry.h"

// The switcher's list operations: pure functions of plain values, no platform and no clock. Indexes are
// positions in the flattened list (every group's cards in group order).
namespace quillmar::SwitcherLogic {

// Builds the groups from the catalogue's apps and windows. `recency` lists pids most recent first.
//
// Order: apps by recency (apps it does not know follow, by name, case-insensitively, then by pid); then a
// stable sort by tier, so each tier keeps that order: first the frontmost app and apps with a window that
// is on screen (not minimised, on the current Space), then apps whose windows are all minimised or
// elsewhere and hidden apps, then windowless apps. Within an app, windows keep the catalogue's order
// (front to back) with minimised windows and windows on other Spaces moved after the rest.
//
// Filters, by `options`: windows on other Spaces unless all Spaces are wanted; windows whose centre lies
// outside `currentDisplay` (bounds in top-left global coordinates) when only the current display is
// wanted and it is known; minimised windows; hidden apps; apps left without windows, which otherwise get
// one windowless card. The group of the app with `isActive` is marked frontmost.
std::vector<SwitcherGroup> groups(const std::vector<AppSnapshot>& apps, const std::vector<WindowEntry>& windows,
    const std::vector<std::int32_t>& recency, const SwitcherOptions& options,
    std::optional<Rect> currentDisplay = std::nullopt);

std::vector<SwitcherItem> flatten(const std::vector<SwitcherGroup>& groups);

std::size_t itemCount(const std::vector<SwitcherGroup>& groups);

// `text` folded for the filter: compatibility forms (full-width letters) replaced, case folded, accents
// removed, and every run of white space made one space. Locale-independent, so the same in every locale.
std::string foldedForFilter(std::string_view text);

// The cards whose folded "app name + space + title" contains every word of the folded, trimmed query;
// groups left empty are dropped, the order kept. An empty or blank query returns `groups` unchanged.
std::vector<SwitcherGroup> filtered(const std::vector<SwitcherGroup>& groups, std::string_view query);

// The flattened index of each group's first card. Empty groups get no entry.
std::vector<std::size_t> groupStarts(const std::vector<SwitcherGroup>& groups);

// The first card of the next (forward) or previous group of the card at `index`. It stops at the first and
// the last group: no wrap. An index past the end is returned unchanged.
std::size_t jumpGroup(std::size_t index, const std::vector<SwitcherGroup>& groups, bool forward);

// The next card of the same group, wrapping inside the group. An index past the end is returned unchanged.
std::size_t nextInGroup(std::size_t index, const std::vector<SwitcherGroup>& groups);

// At most `limit` cards, every app keeping its first card before any app keeps a second: the first `limit`
// groups cut to one card each, then what the limit leaves given back to their further cards, group by
// group. Unchanged when there are `limit` cards or fewer.
std::vector<SwitcherGroup> limited(const std::vector<SwitcherGroup>& groups, std::size_t limit);

// Where a session starts: 0 for an empty list; the last card when `reverse`; 0 when there is no active
// app or the first group is not it; when the active app is the only group, its second card (0 if it has
// one); otherwise the first card of the second group, the previous app.
std::size_t initialSelection(const std::vector<SwitcherGroup>& groups, std::optional<std::int32_t> activePID,
    bool reverse);

// `index + step` over `count` cards: wrapping around both ends, or held at them. 0 when `count` is 0.
std::size_t stepped(std::size_t index, std::int64_t step, std::size_t count, bool wrap);

// Whether an action key must be pressed a second time before it acts on `item` of `app`. Quitting an app
// with more than one window would take windows the user is not looking at, so it asks twice; closing one
// window and quitting an app that shows one card act at once.
bool needsSecondPress(SwitcherAction action, const SwitcherItem& item, const SwitcherGroup& app);

} // namespace quillmar::SwitcherLogic
