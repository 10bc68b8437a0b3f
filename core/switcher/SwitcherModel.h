#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/runtime/MainQueue.h"
#include "core/switcher/SwitcherGroup.h"
#include "core/switcher/SwitcherOptions.h"
#include "core/windows/Geometry.h"

namespace quillmar {

// What the switcher's panel shows: the cards after filtering and the limit, the selection, the query and
// the marks. Observable; confined to the main thread (every member checks).
class SwitcherModel final {
public:
    using Observer = std::function<void()>;
    using ObserverId = std::uint64_t;
    // An application icon as the panel's backend loaded it; the core never looks inside.
    using Icon = std::shared_ptr<const void>;

    static constexpr std::size_t maxQueryLength = 63; // in code points

    // Space between cards and around them, in points.
    static constexpr double cardSpacing = 12;

    explicit SwitcherModel(const MainQueue& mainQueue);

    SwitcherModel(const SwitcherModel&) = delete;
    SwitcherModel& operator=(const SwitcherModel&) = delete;

    // The cards shown: the unfiltered groups filtered by the query, then cut to `cardLimit`.
    const std::vector<SwitcherGroup>& groups() const;
    // What `refilter` starts from.
    const std::vector<SwitcherGroup>& unfilteredGroups() const;
    // Replaces the unfiltered groups and refilters.
    void setGroups(std::vector<SwitcherGroup> groups);
    // Recomputes `groups`. The selected card stays selected when it is still shown, else the first card is.
    void refilter();
    // Drops the cards whose ids are in `ids` from the unfiltered groups (and groups left empty), refilters.
    void removeItems(const std::set<std::string>& ids);

    std::size_t itemCount() const;
    // An index into the flattened `groups`, or none when nothing is shown.
    std::optional<std::size_t> selectedIndex() const;
    // Selects `index`; an index past the end selects nothing.
    void select(std::optional<std::size_t> index);
    std::optional<SwitcherItem> selectedItem() const;
    // The group holding the selected card.
    const SwitcherGroup* selectedGroup() const;

    const std::string& query() const;
    // Appends `text` unless the query would pass `maxQueryLength`; false when refused. Does not refilter.
    bool appendToQuery(std::string_view text);
    // Drops the last code point; false when the query was empty. Does not refilter.
    bool dropLastQueryCharacter();
    // False when the query was already empty. Does not refilter.
    bool clearQuery();

    // The session was opened without a held modifier: it stays until Return, Escape or a click.
    bool isPinned() const;
    void setPinned(bool pinned);

    // Ids of cards whose window is being closed or whose app is quitting.
    const std::set<std::string>& closing() const;
    void markClosing(const std::string& id, bool closing);

    // The card armed by a first press of an action key that needs a second one.
    struct ArmedAction {
        std::string itemID;
        bool quit = false;
        friend bool operator==(const ArmedAction&, const ArmedAction&) = default;
    };
    const std::optional<ArmedAction>& armedAction() const;
    void setArmedAction(std::optional<ArmedAction> action);

    const std::map<std::int32_t, Icon>& icons() const;
    void setIcon(std::int32_t pid, Icon icon);

    // Card and panel sizes, in points. The panel is at most round(width × 0.92 − 48) wide and height × 0.85
    // tall on a screen of `screen` points; cards are larger with previews. No screen: no size limits.
    void setScreen(std::optional<Size> screen);
    Size cardSize() const;
    double maxWidth() const;
    double maxHeight() const;
    // How many cards fit in the panel: whole rows and columns of cards with their spacing, at least one.
    std::size_t cardLimit() const;

    bool actionKeys() const;
    bool showsPreviews() const;
    void setPreferences(const SwitcherOptions& options);
    // "⌥" or "⌘", for the panel's hint line.
    const std::string& triggerSymbol() const;

    // Forgets the session: query, selection, pins, marks, armed action and cards; icons are kept.
    void reset();

    // Observers are called after every change, on the main thread.
    ObserverId observe(Observer observer);
    void removeObserver(ObserverId id);

private:
    void assertMainThread() const;
    void changed();
    // Keeps the selected card selected when it is still shown, else selects `fallback` (held to the end).
    void refilter(std::size_t fallback);

    const MainQueue& m_mainQueue;
    std::vector<SwitcherGroup> m_unfiltered;
    std::vector<SwitcherGroup> m_groups;
    std::optional<std::size_t> m_selectedIndex;
    std::string m_query;
    bool m_pinned = false;
    std::set<std::string> m_closing;
    std::optional<ArmedAction> m_armedAction;
    std::map<std::int32_t, Icon> m_icons;
    std::optional<Size> m_screen;
    Size m_cardSize;
    double m_maxWidth = 0;
    double m_maxHeight = 0;
    bool m_actionKeys = true;
    bool m_showsPreviews = true;
    std::string m_triggerSymbol;
    std::vector<std::pair<ObserverId, Observer>> m_observers;
    ObserverId m_nextObserverId = 1;
};

} // namespace quillmar
