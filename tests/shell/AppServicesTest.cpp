#include <gtest/gtest.h>

#include "core/runtime/VirtualRuntime.h"
#include "core/settings/MemorySettingsBackend.h"
#include "core/shell/AppServices.h"
#include "core/shell/PassiveModule.h"
#include "tests/shell/RecordingServices.h"
#include "tests/shell/ShellFixture.h"

namespace quillmar {
namespace {

CallLog moduleApplies()
{
    CallLog applies;
    for (auto id : allModuleIDs)
        applies.push_back(std::string(name(id)) + ".apply");
    return applies;
}

CallLog joined(CallLog head, const CallLog& tail)
{
    head.insert(head.end(), tail.begin(), tail.end());
    return head;
}

TEST(AppServices, ApplyingDefaultsRunsTheStepsInOrder)
{
    ShellFixture fixture;
    fixture.log.clear();
    fixture.services->applyFeatures();
    EXPECT_EQ(fixture.log,
        joined({ "clipboard.setCleansLinks on", "clipboard.start", "alerts.setEnabled on", "snippets.setEnabled on",
                   "quitProtection.setEnabled off", "input.setNeedsRefresh", "readouts.apply" },
            moduleApplies()));
    EXPECT_TRUE(fixture.services->hotKeys().isRegistered(ShortcutAction::togglePanel)) << "hot keys come last";
}

TEST(AppServices, SwitchingThingsOffStopsTheirMachinery)
{
    ShellFixture fixture(nlohmann::json {
        { "features.disabled", { "clipboard", "keepAwake", "monitor", "snippets", "sound", "timer" } },
        { "features.known", ShellFixture::allRawValues() } },
        ShellFixture::Running { .keepAwake = true, .countdown = true });
    fixture.log.clear();
    fixture.services->applyFeatures();
    EXPECT_EQ(fixture.log,
        joined({ "clipboard.stop", "keepAwake.stop", "countdown.cancel", "alerts.setEnabled off",
                   "snippets.setEnabled off", "audio.stopWatching", "quitProtection.setEnabled on",
                   "input.setNeedsRefresh", "readouts.apply" },
            moduleApplies()));
}

TEST(AppServices, CleanLinksFollowsItsOwnSwitch)
{
    ShellFixture fixture;
    fixture.services->start();
    fixture.log.clear();
    fixture.services->features().set(FeatureID::cleanLinks, false);
    ASSERT_GE(fixture.log.size(), 2u);
    EXPECT_EQ(fixture.log[0], "clipboard.setCleansLinks off");
    EXPECT_EQ(fixture.log[1], "clipboard.start");
}

TEST(AppServices, StartAppliesThenReappliesOnEveryChange)
{
    ShellFixture fixture;
    fixture.log.clear();
    fixture.services->start();
    EXPECT_EQ(fixture.log.back(), "readouts.apply") << "the readouts are applied once more after the first pass";
    fixture.log.clear();

    fixture.services->features().set(FeatureID::clipboard, false);
    EXPECT_EQ(fixture.log.front(), "clipboard.stop");
    EXPECT_FALSE(fixture.services->hotKeys().isRegistered(ShortcutAction::clipboardPicker));
    EXPECT_TRUE(fixture.services->hotKeys().isRegistered(ShortcutAction::togglePanel));

    fixture.log.clear();
    fixture.services->features().set(FeatureID::clipboard, false);
    EXPECT_TRUE(fixture.log.empty()) << "a no-op switch applies nothing";
}

TEST(AppServices, ShortcutChangeReregistersAfterStart)
{
    ShellFixture fixture;
    fixture.services->start();
    fixture.services->shortcuts().set(std::nullopt, ShortcutAction::leftHalf);
    EXPECT_FALSE(fixture.services->hotKeys().isRegistered(ShortcutAction::leftHalf));
    EXPECT_TRUE(fixture.services->hotKeys().isRegistered(ShortcutAction::rightHalf));
}

TEST(AppServices, HotKeyListFollowsBindingsAndSwitches)
{
    ShellFixture fixture(nlohmann::json {
        { "features.disabled", { "clipboard", "commandBar", "windowLayout" } },
        { "features.known", ShellFixture::allRawValues() } });
    std::vector<ShortcutAction> listed;
    for (const auto& [action, shortcut] : fixture.services->hotKeyList())
        listed.push_back(action);
    // keepAwake, radialMenu and others have no default binding; the switched-off features drop out.
    EXPECT_EQ(listed,
        (std::vector<ShortcutAction> { ShortcutAction::togglePanel, ShortcutAction::plainPaste,
            ShortcutAction::colorPicker, ShortcutAction::textGrab, ShortcutAction::captureScreen,
            ShortcutAction::recordScreen, ShortcutAction::quickPanel, ShortcutAction::micMute }));
}

TEST(AppServices, PerformRoutesEachActionToItsOwner)
{
    ShellFixture fixture;
    int toggles = 0;
    fixture.services->setPanelToggle([&] { ++toggles; });
    fixture.log.clear();

    fixture.services->perform(ShortcutAction::togglePanel);
    fixture.services->perform(ShortcutAction::leftHalf);
    fixture.services->perform(ShortcutAction::keepAwake);
    fixture.services->perform(ShortcutAction::clipboardPicker);
    fixture.services->perform(ShortcutAction::captureScreen);
    fixture.services->perform(ShortcutAction::radialMenu); // off by default: nothing happens

    EXPECT_EQ(toggles, 1);
    EXPECT_EQ(fixture.log, (CallLog { "layout.apply leftHalf", "keepAwake.toggle", "Tools.perform clipboardPicker",
                               "Capture.perform captureScreen" }));
}

TEST(AppServices, APressedHotKeyRunsItsActionOnTheMainQueue)
{
    ShellFixture fixture;
    fixture.services->start();
    fixture.log.clear();
    fixture.press(ShortcutAction::leftHalf);
    EXPECT_TRUE(fixture.log.empty());
    fixture.runtime.runUntilIdle();
    EXPECT_EQ(fixture.log, (CallLog { "layout.apply leftHalf" }));
}

TEST(Modules, ModuleOwningFindsTheFirstListingModule)
{
    auto modules = Modules::standard();
    for (auto feature : allFeatures())
        EXPECT_NE(modules.moduleOwning(feature), nullptr) << rawValue(feature) << " has no module";
    ASSERT_NE(modules.moduleOwning(FeatureID::commandBar), nullptr);
    EXPECT_EQ(modules.moduleOwning(FeatureID::commandBar)->name(), "Command");

    std::vector<std::unique_ptr<FeatureModule>> islandOnly;
    islandOnly.push_back(std::make_unique<PassiveModule>(ModuleID::island));
    Modules partial(std::move(islandOnly));
    EXPECT_EQ(partial.moduleOwning(FeatureID::dragSnap), nullptr);
    EXPECT_EQ(partial.moduleOwning(FeatureID::island), partial.all().front());
}

} // namespace
} // namespace quillmar
