#include <gtest/gtest.h>

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
    EXPECT_EQ(seen.size(), 35u);
    EXPECT_EQ(rawValue(allShortcutActions().front()), "togglePanel");
    EXPECT_EQ(rawValue(allShortcutActions().back()), "cleaningMode");
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

TEST(ShortcutAction, DefaultsBindTwentyEightActionsWithoutAccidentalClashes)
{
    std::vector<std::pair<std::uint32_t, std::uint32_t>> combinations;
    for (auto action : allShortcutActions()) {
        if (auto shortcut = defaultShortcut(action)) {
            EXPECT_FALSE(shortcut->keyLabel.empty()) << rawValue(action);
            combinations.emplace_back(shortcut->keyCode, shortcut->modifiers);
        }
    }
    EXPECT_EQ(combinations.size(), 28u);
    std::set<std::pair<std::uint32_t, std::uint32_t>> unique(combinations.begin(), combinations.end());
    EXPECT_EQ(unique.size(), combinations.size()) << "two actions ship with the same combination";
}

TEST(ShortcutAction, FeaturesOwnTheirActionsInDeclarationOrder)
{
    auto layout = shortcutActions(FeatureID::windowLayout);
    ASSERT_EQ(layout.size(), 19u);
    EXPECT_EQ(layout.front(), ShortcutAction::leftHalf);
    EXPECT_EQ(layout.back(), ShortcutAction::previousDisplay);
    EXPECT_EQ(shortcutActions(FeatureID::clipboard), std::vector { ShortcutAction::clipboardPicker });
    EXPECT_TRUE(shortcutActions(FeatureID::monitor).empty());

    std::size_t owned = 0;
    for (auto owner : allFeatures())
        owned += shortcutActions(owner).size();
    EXPECT_EQ(owned, 34u) << "every action but togglePanel has an owner";
}

} // namespace
} // namespace quillmar
