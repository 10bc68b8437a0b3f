#include <gtest/gtest.h>

#include <memory>

#include "core/desktop/InputEvent.h"
#include "core/settings/MemorySettingsBackend.h"
#include "core/windows/WindowsPreferences.h"

namespace quillmar {
namespace {

using P = WindowsPreferences;

std::unique_ptr<Settings> settingsWith(nlohmann::json saved)
{
    return std::make_unique<Settings>(std::make_unique<MemorySettingsBackend>(std::move(saved)));
}

TEST(WindowsPreferences, ReadsUnknownValuesAsTheFirstCase)
{
    auto settings = settingsWith({
        { "windows.switcher.trigger", "control" },
        { "windows.switcher.spaces", "some" },
        { "windows.dockClicks.action", "explode" },
        { "windows.snap.top", "bottom" },
        { "windows.snap.bottom", 3 },
        { "windows.drag.chord", "shiftOption" },
    });
    P preferences(*settings);
    EXPECT_EQ(preferences.switcherTrigger(), SwitcherTrigger::option);
    EXPECT_EQ(preferences.switcherSpaces(), SwitcherSpaces::all);
    EXPECT_EQ(preferences.dockClickAction(), DockClickAction::minimize);
    EXPECT_EQ(preferences.snapTop(), SnapZones::TopEdge::maximize);
    EXPECT_EQ(preferences.snapBottom(), SnapZones::BottomEdge::off);
    EXPECT_EQ(preferences.dragChord(), DragChord::controlOption);
}

TEST(WindowsPreferences, ReadsEveryNamedValue)
{
    auto settings = settingsWith({
        { "windows.switcher.trigger", "command" },
        { "windows.switcher.spaces", "current" },
        { "windows.dockClicks.action", "cycle" },
        { "windows.snap.top", "thirds" },
        { "windows.snap.bottom", "bottomHalf" },
        { "windows.snap.corners", false },
        { "windows.drag.chord", "controlOptionCommand" },
        { "windows.maximize.excluded", { "com.example.game" } },
        { "windowLayout.gap", 12.5 },
    });
    P preferences(*settings);
    EXPECT_EQ(preferences.switcherTrigger(), SwitcherTrigger::command);
    EXPECT_EQ(preferences.switcherSpaces(), SwitcherSpaces::current);
    EXPECT_EQ(preferences.dockClickAction(), DockClickAction::cycle);
    EXPECT_EQ(preferences.snapConfig(), (SnapZones::Config { true, false, SnapZones::TopEdge::thirds,
                                            SnapZones::BottomEdge::bottomHalf }));
    EXPECT_EQ(preferences.dragChord(), DragChord::controlOptionCommand);
    EXPECT_EQ(preferences.maximizeExcluded(), (std::vector<std::string> { "com.example.game" }));
    EXPECT_EQ(preferences.windowGap(), 12.5);
}

TEST(WindowsPreferences, ClampsTheDockPreviewDelayOnLoad)
{
    struct Row {
        double saved;
        double loaded;
    };
    for (auto row : { Row { 0.05, 0.2 }, Row { 0.5, 0.5 }, Row { 3, 0.9 }, Row { -1, 0.2 } }) {
        SCOPED_TRACE(row.saved);
        auto settings = settingsWith({ { "windows.dockPreview.delay", row.saved } });
        EXPECT_EQ(P(*settings).dockPreviewDelay(), row.loaded);
    }
}

TEST(WindowsPreferences, SettersWriteTheirKeyAndTheGettersFollow)
{
    auto settings = settingsWith(nlohmann::json::object());
    P preferences(*settings);
    preferences.setSwitcherTrigger(SwitcherTrigger::command);
    preferences.setSnapBottom(SnapZones::BottomEdge::thirds);
    preferences.setDragChord(DragChord::optionCommand);
    preferences.setFlag(P::snapSidesKey, false);
    preferences.setDockClickAction(DockClickAction::hide);
    EXPECT_EQ(settings->string("windows.switcher.trigger"), "command");
    EXPECT_EQ(settings->string("windows.snap.bottom"), "thirds");
    EXPECT_EQ(settings->string("windows.drag.chord"), "optionCommand");
    EXPECT_EQ(settings->string("windows.dockClicks.action"), "hide");
    EXPECT_EQ(preferences.switcherTrigger(), SwitcherTrigger::command);
    EXPECT_EQ(preferences.dragChord(), DragChord::optionCommand);
    EXPECT_FALSE(preferences.snapConfig().sides);
    EXPECT_EQ(preferences.snapConfig().bottom, SnapZones::BottomEdge::thirds);

    // A change made elsewhere is picked up as well.
    settings->set("windows.switcher.previews", false);
    EXPECT_FALSE(preferences.switcherPreviews());
}

TEST(WindowsPreferences, ANegativeGapReadsAsNone)
{
    auto settings = settingsWith({ { "windowLayout.gap", -8 } });
    EXPECT_EQ(P(*settings).windowGap(), 0);
}

TEST(DragChords, MatchExactlyTheirModifiersWithShiftAllowed)
{
    using namespace EventFlags;
    struct Row {
        DragChord chord;
        std::uint64_t flags;
        bool held;
    };
    const Row rows[] = {
        { DragChord::controlOption, control | option, true },
        { DragChord::controlOption, control | option | shift, true },
        { DragChord::controlOption, control | option | capsLock, true },
        { DragChord::controlOption, control | option | command, false },
        { DragChord::controlOption, control, false },
        { DragChord::controlCommand, control | command, true },
        { DragChord::optionCommand, option | command, true },
        { DragChord::optionCommand, control | option, false },
        { DragChord::controlOptionCommand, control | option | command, true },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << rawValue(row.chord) << " " << row.flags);
        EXPECT_EQ(isHeld(row.chord, row.flags), row.held);
    }
}

} // namespace
} // namespace quillmar
