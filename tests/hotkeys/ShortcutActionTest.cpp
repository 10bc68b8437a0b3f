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

struct ActionRow {
    const char* name;
    ShortcutAction action;
    std::string_view rawValue;
    std::string_view title;
    std::optional<FeatureID> feature;
    std::optional<Shortcut> shortcut;
};

// Test names show the row's name rather than its bytes.
void PrintTo(const ActionRow& row, std::ostream* out)
{
    *out << row.name;
}

class ShortcutActionRow : public testing::TestWithParam<ActionRow> { };

TEST_P(ShortcutActionRow, MatchesTheTable)
{
    const auto& row = GetParam();
    EXPECT_EQ(rawValue(row.action), row.rawValue);
    EXPECT_EQ(title(row.action), row.title);
    EXPECT_EQ(feature(row.action), row.feature);
    EXPECT_EQ(defaultShortcut(row.action), row.shortcut);
}

INSTANTIATE_TEST_SUITE_P(Table, ShortcutActionRow,
    testing::Values(
        ActionRow { "togglePanelHasNoFeature", ShortcutAction::togglePanel, "togglePanel", "Open Quillmar",
            std::nullopt, Shortcut { 49, 6144, "Space" } },
        ActionRow { "clipboardPickerIsControlOptionV", ShortcutAction::clipboardPicker, "clipboardPicker",
            "Show clipboard history", FeatureID::clipboard, Shortcut { 9, 6144, "V" } },
        ActionRow { "plainPasteAddsShiftToTheSameKey", ShortcutAction::plainPaste, "plainPaste",
            "Paste as plain text", FeatureID::plainPaste, Shortcut { 9, 6656, "V" } },
        ActionRow { "keepAwakeShipsUnbound", ShortcutAction::keepAwake, "keepAwake", "Toggle keep awake",
            FeatureID::keepAwake, std::nullopt },
        ActionRow { "maximizeUsesReturn", ShortcutAction::maximize, "maximize", "Maximize",
            FeatureID::windowLayout, Shortcut { 36, 6144, "↩" } },
        ActionRow { "previousDisplayAddsCommand", ShortcutAction::previousDisplay, "previousDisplay",
            "Previous display", FeatureID::windowLayout, Shortcut { 123, 6400, "←" } },
        ActionRow { "captureScreenBelongsToScreenshot", ShortcutAction::captureScreen, "captureScreen",
            "Take a screenshot", FeatureID::screenshot, Shortcut { 1, 6144, "S" } },
        ActionRow { "commandBarIsOptionSpace", ShortcutAction::commandBar, "commandBar", "Open the command bar",
            FeatureID::commandBar, Shortcut { 49, 2048, "Space" } },
        ActionRow { "quickPanelIsControlCommandV", ShortcutAction::quickPanel, "quickPanel",
            "Open the quick panel", FeatureID::quickPanel, Shortcut { 9, 4352, "V" } },
        ActionRow { "cleaningModeIsLast", ShortcutAction::cleaningMode, "cleaningMode", "Start cleaning mode",
            FeatureID::cleaningMode, std::nullopt }),
    [](const testing::TestParamInfo<ActionRow>& row) { return std::string(row.param.name); });

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
