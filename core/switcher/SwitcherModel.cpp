#include "core/switcher/SwitcherModel.h"

#include <algorithm>
#include <cmath>

#include "core/base/Utf8.h"
#include "core/switcher/SwitcherLogic.h"

namespace quillmar {

namespace {

// Cards in points: a window preview with its title below, or an icon with the title when previews are off.
constexpr Size previewCard { 220, 170 };
constexpr Size iconCard { 128, 128 };

std::size_t fitting(double space, double card)
{
    double count = std::floor((space - SwitcherModel::cardSpacing) / (card + SwitcherModel::cardSpacing));
    return count < 1 ? 1 : static_cast<std::size_t>(count);
}

} // namespace

SwitcherModel::SwitcherModel(const MainQueue& mainQueue)
    : m_mainQueue(mainQueue)
{
    setPreferences(SwitcherOptions {});
}

void SwitcherModel::assertMainThread() const
{
    m_mainQueue.assertMainThread("SwitcherModel");
}

void SwitcherModel::changed()
{
    // A copy: an observer may add or remove observers.
    auto observers = m_observers;
    for (const auto& [id, observer] : observers)
        observer();
}

const std::vector<SwitcherGroup>& SwitcherModel::groups() const
{
    assertMainThread();
    return m_groups;
}

const std::vector<SwitcherGroup>& SwitcherModel::unfilteredGroups() const
{
    assertMainThread();
    return m_unfiltered;
}

void SwitcherModel::setGroups(std::vector<SwitcherGroup> groups)
{
    assertMainThread();
    m_unfiltered = std::move(groups);
    refilter();
}

void SwitcherModel::refilter()
{
    assertMainThread();
    refilter(0);
}

void SwitcherModel::refilter(std::size_t fallback)
{
    auto previous = selectedItem();
    m_groups = SwitcherLogic::limited(SwitcherLogic::filtered(m_unfiltered, m_query), cardLimit());
    auto items = SwitcherLogic::flatten(m_groups);
    m_selectedIndex.reset();
    if (!items.empty()) {
        m_selectedIndex = std::min(fallback, items.size() - 1);
        if (previous) {
            auto id = previous->id();
            auto found = std::find_if(items.begin(), items.end(), [&](const SwitcherItem& item) { return item.id() == id; });
            if (found != items.end())
                m_selectedIndex = static_cast<std::size_t>(found - items.begin());
        }
    }
    changed();
}

void SwitcherModel::removeItems(const std::set<std::string>& ids)
{
    assertMainThread();
    for (auto& group : m_unfiltered)
        std::erase_if(group.items, [&](const SwitcherItem& item) { return ids.contains(item.id()); });
    std::erase_if(m_unfiltered, [](const SwitcherGroup& group) { return group.items.empty(); });
    for (const auto& id : ids)
        m_closing.erase(id);
    // The card that took the removed one's place is selected, as in a list after a deletion.
    refilter(m_selectedIndex.value_or(0));
}

std::size_t SwitcherModel::itemCount() const
{
    assertMainThread();
    return SwitcherLogic::itemCount(m_groups);
}

std::optional<std::size_t> SwitcherModel::selectedIndex() const
{
    assertMainThread();
    return m_selectedIndex;
}

void SwitcherModel::select(std::optional<std::size_t> index)
{
    assertMainThread();
    if (index && *index >= itemCount())
        index.reset();
    if (index == m_selectedIndex)
        return;
    m_selectedIndex = index;
    changed();
}

std::optional<SwitcherItem> SwitcherModel::selectedItem() const
{
    assertMainThread();
    if (!m_selectedIndex)
        return std::nullopt;
    std::size_t index = *m_selectedIndex;
    for (const auto& group : m_groups) {
        if (index < group.items.size())
            return group.items[index];
        index -= group.items.size();
    }
    return std::nullopt;
}

const SwitcherGroup* SwitcherModel::selectedGroup() const
{
    assertMainThread();
    if (!m_selectedIndex)
        return nullptr;
    std::size_t index = *m_selectedIndex;
    for (const auto& group : m_groups) {
        if (index < group.items.size())
            return &group;
        index -= group.items.size();
    }
    return nullptr;
}

const std::string& SwitcherModel::query() const
{
    assertMainThread();
    return m_query;
}

bool SwitcherModel::appendToQuery(std::string_view text)
{
    assertMainThread();
    auto added = decodeUtf8(text);
    if (added.empty() || decodeUtf8(m_query).size() + added.size() > maxQueryLength)
        return false;
    m_query += encodeUtf8(added);
    changed();
    return true;
}

bool SwitcherModel::dropLastQueryCharacter()
{
    assertMainThread();
    if (m_query.empty())
        return false;
    auto codePoints = decodeUtf8(m_query);
    codePoints.pop_back();
    m_query = encodeUtf8(codePoints);
    changed();
    return true;
}

bool SwitcherModel::clearQuery()
{
    assertMainThread();
    if (m_query.empty())
        return false;
    m_query.clear();
    changed();
    return true;
}

bool SwitcherModel::isPinned() const
{
    assertMainThread();
    return m_pinned;
}

void SwitcherModel::setPinned(bool pinned)
{
    assertMainThread();
    if (m_pinned == pinned)
        return;
    m_pinned = pinned;
    changed();
}

const std::set<std::string>& SwitcherModel::closing() const
{
    assertMainThread();
    return m_closing;
}

void SwitcherModel::markClosing(const std::string& id, bool closing)
{
    assertMainThread();
    bool changedSet = closing ? m_closing.insert(id).second : m_closing.erase(id) != 0;
    if (changedSet)
        changed();
}

const std::optional<SwitcherModel::ArmedAction>& SwitcherModel::armedAction() const
{
    assertMainThread();
    return m_armedAction;
}

void SwitcherModel::setArmedAction(std::optional<ArmedAction> action)
{
    assertMainThread();
    if (m_armedAction == action)
        return;
    m_armedAction = std::move(action);
    changed();
}

const std::map<std::int32_t, SwitcherModel::Icon>& SwitcherModel::icons() const
{
    assertMainThread();
    return m_icons;
}

void SwitcherModel::setIcon(std::int32_t pid, Icon icon)
{
    assertMainThread();
    m_icons[pid] = std::move(icon);
    changed();
}

void SwitcherModel::setScreen(std::optional<Size> screen)
{
    assertMainThread();
    m_screen = screen;
    if (screen) {
        m_maxWidth = std::round(screen->width * 0.92 - 48);
        m_maxHeight = screen->height * 0.85;
    } else {
        m_maxWidth = 0;
        m_maxHeight = 0;
    }
    changed();
}

Size SwitcherModel::cardSize() const
{
    assertMainThread();
    return m_cardSize;
}

double SwitcherModel::maxWidth() const
{
    assertMainThread();
    return m_maxWidth;
}

double SwitcherModel::maxHeight() const
{
    assertMainThread();
    return m_maxHeight;
}

std::size_t SwitcherModel::cardLimit() const
{
    assertMainThread();
    if (!m_screen)
        return std::numeric_limits<std::size_t>::max();
    return fitting(m_maxWidth, m_cardSize.width) * fitting(m_maxHeight, m_cardSize.height);
}

bool SwitcherModel::actionKeys() const
{
    assertMainThread();
    return m_actionKeys;
}

bool SwitcherModel::showsPreviews() const
{
    assertMainThread();
    return m_showsPreviews;
}

void SwitcherModel::setPreferences(const SwitcherOptions& options)
{
    assertMainThread();
    m_actionKeys = options.actionKeys;
    m_showsPreviews = options.previews;
    m_cardSize = options.previews ? previewCard : iconCard;
    m_triggerSymbol = options.trigger == SwitcherTrigger::command ? "\u2318" : "\u2325";
    changed();
}

const std::string& SwitcherModel::triggerSymbol() const
{
    assertMainThread();
    return m_triggerSymbol;
}

void SwitcherModel::reset()
{
    assertMainThread();
    m_unfiltered.clear();
    m_groups.clear();
    m_selectedIndex.reset();
    m_query.clear();
    m_pinned = false;
    m_closing.clear();
    m_armedAction.reset();
    changed();
}

SwitcherModel::ObserverId SwitcherModel::observe(Observer observer)
{
    assertMainThread();
    auto id = m_nextObserverId++;
    m_observers.emplace_back(id, std::move(observer));
    return id;
}

void SwitcherModel::removeObserver(ObserverId id)
{
    assertMainThread();
    std::erase_if(m_observers, [id](const auto& entry) { return entry.first == id; });
}

} // namespace quillmar
