#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/settings/MemorySettingsBackend.h"
#include "core/switcher/SystemSwitcherTakeover.h"
#include "tests/switcher/SwitcherControllerFixture.h"
#include "tests/switcher/SwitcherFakes.h"

namespace quillmar {
namespace {

using testing::ElementsAre;

TEST(SystemSwitcherTakeoverTest, StartTurnsTheSystemSwitcherBackOn)
{
    FakeSymbolicHotKeys hotKeys;
    hotKeys.enabled = false; // left off by a run that crashed
    Settings settings { std::make_unique<MemorySettingsBackend>(nlohmann::json { { "windows.switcher.systemSwitcherOff", true } }) };
    SystemSwitcherTakeover takeover(hotKeys, settings);
    EXPECT_TRUE(hotKeys.enabled);
    EXPECT_FALSE(settings.contains("windows.switcher.systemSwitcherOff"));
}

struct TakeoverRow {
    const char* name;
    std::optional<SymbolicHotKeys::Value> systemKey;
    bool wanted;
    bool expectedOff;
};

TEST(SystemSwitcherTakeoverTest, TakesCommandTabOnlyWhenItIsCommandTab)
{
    const TakeoverRow rows[] = {
        { "Command-Tab, wanted", SymbolicHotKeys::Value { 48, 0x100000 }, true, true },
        { "Command-Tab with Caps Lock on", SymbolicHotKeys::Value { 48, 0x110000 }, true, true },
        { "not wanted", SymbolicHotKeys::Value { 48, 0x100000 }, false, false },
        { "moved to Option-Tab by the user", SymbolicHotKeys::Value { 48, 0x80000 }, true, false },
        { "Command-Shift-Tab", SymbolicHotKeys::Value { 48, 0x120000 }, true, false },
        { "unreadable", std::nullopt, true, false },
    };
    for (const auto& row : rows) {
        FakeSymbolicHotKeys hotKeys;
        hotKeys.switcherKey = row.systemKey;
        Settings settings { std::make_unique<MemorySettingsBackend>() };
        SystemSwitcherTakeover takeover(hotKeys, settings);
        takeover.update(row.wanted);
        EXPECT_EQ(takeover.isSystemSwitcherOff(), row.expectedOff) << row.name;
        EXPECT_EQ(hotKeys.enabled, !row.expectedOff) << row.name;
        EXPECT_EQ(settings.boolValue("windows.switcher.systemSwitcherOff").value_or(false), row.expectedOff) << row.name;
    }
}

TEST(SystemSwitcherTakeoverTest, GivesCommandTabBackWhenDestroyed)
{
    FakeSymbolicHotKeys hotKeys;
    Settings settings { std::make_unique<MemorySettingsBackend>() };
    {
        SystemSwitcherTakeover takeover(hotKeys, settings);
        takeover.update(true);
        EXPECT_FALSE(hotKeys.enabled);
    }
    EXPECT_TRUE(hotKeys.enabled);
    EXPECT_FALSE(settings.contains("windows.switcher.systemSwitcherOff"));
}

using SwitcherTakeoverControllerTest = SwitcherControllerFixture;

TEST_F(SwitcherTakeoverControllerTest, FollowsTheTriggerAndTheSwitch)
{
    options.trigger = SwitcherTrigger::command;
    start();
    EXPECT_FALSE(hotKeys.enabled) << "enabled with the Command trigger";
    options.trigger = SwitcherTrigger::option;
    controller->refreshTrigger();
    EXPECT_TRUE(hotKeys.enabled);
    EXPECT_TRUE(keyDown(KeyCode::tab, option)) << "the new trigger is in force at once";
    flags(0);
    options.trigger = SwitcherTrigger::command;
    controller->refreshTrigger();
    EXPECT_FALSE(hotKeys.enabled);
    controller->setEnabled(false);
    EXPECT_TRUE(hotKeys.enabled);
    EXPECT_THAT(hotKeys.calls, ElementsAre("enable 1", "disable 1", "enable 1", "disable 1", "enable 1"));
}

} // namespace
} // namespace quillmar
