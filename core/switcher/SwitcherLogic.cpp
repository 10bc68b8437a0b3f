#include "core/switcher/SwitcherLogic.h"

#include <algorithm>
#include <map>
#include <unordered_map>

#include <unicode/uchar.h>

#include "core/base/SearchFolding.h"
#include "core/base/Text.h"
#include "core/base/Utf8.h"

namespace quillmar::SwitcherLogic {

namespace {

// Lower ranks come first; see the header for why each tier sits where it does.
enum class Tier { onScreen = 0, offScreen = 1, windowless = 2 };

bool isOnScreen(const WindowEntry& window)
{
    return !window.isMinimized && window.isOnCurrentSpace;
}

bool isKept(const WindowEntry& window, const SwitcherOptions& options, const std::optional<Rect>& display)
{
    if (!window.isOnCurrentSpace && options.spaces != SwitcherSpaces::all)
        return false;
    if (window.isMinimized && !options.minimizedWindows)
        return false;
    if (options.currentDisplayOnly && display) {
        Point centre { window.frame.midX(), window.frame.midY() };
        if (!display->contains(centre))
            return false;
    }
    return true;
}

bool isAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// Each whitespace-separated piece folded on its own and the pieces joined with one space: loose folding drops
// white space, and a query word (which has none) must not match across two words of a title.
std::string foldPieces(std::string_view text)
{
    auto codePoints = decodeUtf8(text);
    std::string result;
    std::u32string piece;
    auto flush = [&] {
        if (piece.empty())
            return;
        if (!result.empty())
            result += ' ';
        result += foldedLoosely(encodeUtf8(piece));
        piece.clear();
    };
    for (auto codePoint : codePoints) {
        if (u_isUWhiteSpace(static_cast<UChar32>(codePoint)))
            flush();
        else
            piece.push_back(codePoint);
    }
    flush();
    return result;
}

std::vector<std::string> splitAtSpaces(std::string_view text)
{
    std::vector<std::string> words;
    std::size_t start = 0;
    while (start < text.size()) {
        auto end = text.find(' ', start);
        if (end == std::string_view::npos)
            end = text.size();
        if (end > start)
            words.emplace_back(text.substr(start, end - start));
        start = end + 1;
    }
    return words;
}

} // namespace

std::vector<SwitcherGroup> groups(const std::vector<AppSnapshot>& apps, const std::vector<WindowEntry>& windows,
    const std::vector<std::int32_t>& recency, const SwitcherOptions& options, std::optional<Rect> currentDisplay)
{
    std::unordered_map<std::int32_t, std::vector<const WindowEntry*>> windowsByPID;
    for (const auto& window : windows)
        windowsByPID[window.pid].push_back(&window);

    std::unordered_map<std::int32_t, std::size_t> recencyRank;
    for (std::size_t rank = 0; rank < recency.size(); ++rank)
        recencyRank.emplace(recency[rank], rank); // the first mention counts

    std::vector<const AppSnapshot*> ordered;
    ordered.reserve(apps.size());
    for (const auto& app : apps)
        ordered.push_back(&app);
    std::sort(ordered.begin(), ordered.end(), [&](const AppSnapshot* a, const AppSnapshot* b) {
        auto rankA = recencyRank.find(a->pid);
        auto rankB = recencyRank.find(b->pid);
        bool knownA = rankA != recencyRank.end();
        bool knownB = rankB != recencyRank.end();
        if (knownA != knownB)
            return knownA;
        if (knownA)
            return rankA->second < rankB->second;
        auto nameA = asciiLower(a->name);
        auto nameB = asciiLower(b->name);
        if (nameA != nameB)
            return nameA < nameB;
        return a->pid < b->pid;
    });

    std::vector<std::pair<Tier, SwitcherGroup>> built;
    for (const auto* app : ordered) {
        if (app->isHidden && !options.hiddenApps)
            continue;
        std::vector<const WindowEntry*> kept;
        if (auto found = windowsByPID.find(app->pid); found != windowsByPID.end()) {
            for (const auto* window : found->second) {
                if (isKept(*window, options, currentDisplay))
                    kept.push_back(window);
            }
        }
        std::stable_partition(kept.begin(), kept.end(), [](const WindowEntry* window) { return isOnScreen(*window); });

        SwitcherGroup group { app->pid, app->name, app->isActive, {} };
        Tier tier = Tier::windowless;
        if (kept.empty()) {
            if (!options.windowlessApps)
                continue;
            group.items.push_back({ std::nullopt, app->pid, app->name, {} });
        } else {
            bool onScreen = !app->isHidden && isOnScreen(*kept.front());
            tier = onScreen ? Tier::onScreen : Tier::offScreen;
            for (const auto* window : kept)
                group.items.push_back({ window->windowNumber, app->pid, app->name, window->title });
        }
        // The frontmost app leads whatever its windows: the switch starts from it.
        if (app->isActive)
            tier = Tier::onScreen;
        built.emplace_back(tier, std::move(group));
    }

    std::stable_sort(built.begin(), built.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<SwitcherGroup> result;
    result.reserve(built.size());
    for (auto& entry : built)
        result.push_back(std::move(entry.second));
    return result;
}

std::vector<SwitcherItem> flatten(const std::vector<SwitcherGroup>& groups)
{
    std::vector<SwitcherItem> items;
    items.reserve(itemCount(groups));
    for (const auto& group : groups)
        items.insert(items.end(), group.items.begin(), group.items.end());
    return items;
}

std::size_t itemCount(const std::vector<SwitcherGroup>& groups)
{
    std::size_t count = 0;
    for (const auto& group : groups)
        count += group.items.size();
    return count;
}

std::string foldedForFilter(std::string_view text)
{
    if (!isAscii(text))
        return foldPieces(text);
    std::string result;
    result.reserve(text.size());
    bool spacePending = false;
    for (char character : text) {
        if (isAsciiSpace(character) || character == '\v' || character == '\f') {
            spacePending = true;
            continue;
        }
        if (spacePending && !result.empty())
            result += ' ';
        spacePending = false;
        result += asciiLower(character);
    }
    return result;
}

std::vector<SwitcherGroup> filtered(const std::vector<SwitcherGroup>& groups, std::string_view query)
{
    auto trimmedQuery = trimmed(query);
    if (trimmedQuery.empty())
        return groups;
    auto words = splitAtSpaces(foldedForFilter(trimmedQuery));
    if (words.empty())
        return groups;

    std::vector<SwitcherGroup> result;
    for (const auto& group : groups) {
        SwitcherGroup kept { group.pid, group.appName, group.isFrontmost, {} };
        for (const auto& item : group.items) {
            auto haystack = foldedForFilter(item.appName + ' ' + item.title);
            bool matches = std::all_of(words.begin(), words.end(),
                [&](const std::string& word) { return haystack.find(word) != std::string::npos; });
            if (matches)
                kept.items.push_back(item);
        }
        if (!kept.items.empty())
            result.push_back(std::move(kept));
    }
    return result;
}

std::vector<std::size_t> groupStarts(const std::vector<SwitcherGroup>& groups)
{
    std::vector<std::size_t> starts;
    std::size_t start = 0;
    for (const auto& group : groups) {
        if (group.items.empty())
            continue;
        starts.push_back(start);
        start += group.items.size();
    }
    return starts;
}

namespace {

// The position in `starts` of the group holding `index`, or none when the index is past the end.
std::optional<std::size_t> groupOf(std::size_t index, const std::vector<std::size_t>& starts, std::size_t count)
{
    if (index >= count || starts.empty())
        return std::nullopt;
    auto after = std::upper_bound(starts.begin(), starts.end(), index);
    return static_cast<std::size_t>(after - starts.begin()) - 1;
}

} // namespace

std::size_t jumpGroup(std::size_t index, const std::vector<SwitcherGroup>& groups, bool forward)
{
    auto starts = groupStarts(groups);
    auto group = groupOf(index, starts, itemCount(groups));
    if (!group)
        return index;
    std::size_t target = forward ? std::min(*group + 1, starts.size() - 1) : (*group == 0 ? 0 : *group - 1);
    return starts[target];
}

std::size_t nextInGroup(std::size_t index, const std::vector<SwitcherGroup>& groups)
{
    auto count = itemCount(groups);
    auto starts = groupStarts(groups);
    auto group = groupOf(index, starts, count);
    if (!group)
        return index;
    auto start = starts[*group];
    auto end = *group + 1 < starts.size() ? starts[*group + 1] : count;
    return start + (index - start + 1) % (end - start);
}

std::vector<SwitcherGroup> limited(const std::vector<SwitcherGroup>& groups, std::size_t limit)
{
    if (itemCount(groups) <= limit)
        return groups;
    std::vector<SwitcherGroup> result;
    for (const auto& group : groups) {
        if (result.size() == limit)
            break;
        if (group.items.empty())
            continue;
        result.push_back({ group.pid, group.appName, group.isFrontmost, { group.items.front() } });
    }
    auto budget = limit - result.size();
    // `result` holds the first groups with cards, in order; walk the originals alongside.
    std::size_t kept = 0;
    for (const auto& group : groups) {
        if (kept == result.size() || budget == 0)
            break;
        if (group.items.empty())
            continue;
        auto extra = std::min(budget, group.items.size() - 1);
        auto& items = result[kept].items;
        items.insert(items.end(), group.items.begin() + 1, group.items.begin() + static_cast<std::ptrdiff_t>(1 + extra));
        budget -= extra;
        ++kept;
    }
    return result;
}

std::size_t initialSelection(const std::vector<SwitcherGroup>& groups, std::optional<std::int32_t> activePID,
    bool reverse)
{
    auto count = itemCount(groups);
    if (count == 0)
        return 0;
    if (reverse)
        return count - 1;
    auto starts = groupStarts(groups);
    const SwitcherGroup* first = nullptr;
    for (const auto& group : groups) {
        if (!group.items.empty()) {
            first = &group;
            break;
        }
    }
    if (!activePID || first == nullptr || first->pid != *activePID)
        return 0;
    if (starts.size() == 1)
        return first->items.size() > 1 ? 1 : 0;
    return starts[1];
}

std::size_t stepped(std::size_t index, std::int64_t step, std::size_t count, bool wrap)
{
    if (count == 0)
        return 0;
    auto n = static_cast<std::int64_t>(count);
    auto target = static_cast<std::int64_t>(index) + step;
    if (wrap)
        return static_cast<std::size_t>(((target % n) + n) % n);
    return static_cast<std::size_t>(std::clamp<std::int64_t>(target, 0, n - 1));
}

bool needsSecondPress(SwitcherAction action, const SwitcherItem&, const SwitcherGroup& app)
{
    if (action == SwitcherAction::close)
        return false;
    auto windows = std::count_if(app.items.begin(), app.items.end(),
        [](const SwitcherItem& card) { return !card.isWindowless(); });
    return windows > 1;
}

} // namespace quillmar::SwitcherLogic
