#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "core/hotkeys/ShortcutAction.h"

namespace quillmar {
namespace {

TEST(ShortcutAction, RawValuesAreUniqueAndRoundTrip)
{
    std::set<std::string_view> seen;
    for (auto action : allShortcutActions()) {
        EXPECT_TRUE(seen.insert(rawValue(action)).second) << rawValue(action);
        EXPECT_EQ(shortcutActionFromRawValue(rawValue(action)), action);
        EXPECT_EQ(shortcutActionFromReference(reference(action)), action);
    }
    EXPECT_EQ(shortcutActionFromRawValue("TogglePanel"), std::nullopt);
    EXPECT_EQ(shortcutActionFromRawValue(""), std::nullopt);
}

TEST(ShortcutAction, ReferencesCarryThePrefix)
{
    EXPECT_EQ(reference(ShortcutAction::clipboardPicker), "shortcut.clipboardPicker");
    EXPECT_EQ(shortcutActionFromReference("shortcut.micMute"), ShortcutAction::micMute);
    EXPECT_EQ(shortcutActionFromReference("clipboardPicker"), std::nullopt);
    EXPECT_EQ(shortcutActionFromReference("shortcut."), std::nullopt);
    EXPECT_EQ(shortcutActionFromReference("shortcut.nothing"), std::nullopt);
}

TEST(ShortcutAction, NoTwoDefaultsShareACombination)
{
    std::vector<std::pair<std::uint32_t, std::uint32_t>> combinations;
    for (auto action : allShortcutActions()) {
        if (auto shortcut = defaultShortcut(action)) {
            EXPECT_FALSE(shortcut->keyLabel.empty()) << rawValue(action);
            combinations.emplace_back(shortcut->keyCode, shortcut->modifiers);
        }
    }
    std::set<std::pair<std::uint32_t, std::uint32_t>> unique(combinations.begin(), combinations.end());
    EXPECT_EQ(unique.size(), combinations.size()) << "two actions ship with the same combination";
}

TEST(ShortcutAction, EveryActionButTogglePanelHasOneOwningFeature)
{
    std::set<ShortcutAction> owned;
    for (auto owner : allFeatures()) {
        auto actions = shortcutActions(owner);
        EXPECT_TRUE(std::is_sorted(actions.begin(), actions.end())) << rawValue(owner);
        for (auto action : actions)
            EXPECT_TRUE(owned.insert(action).second) << rawValue(action);
    }
    EXPECT_EQ(owned.size() + 1, allShortcutActions().size());
    EXPECT_FALSE(owned.contains(ShortcutAction::togglePanel));
}

} // namespace
} // namespace quillmar
