#include <gtest/gtest.h>

#include <string>

#include "tests/windows/WindowsFixture.h"

namespace quillmar {
namespace {

using L = WindowLayout;

class WindowManagerTest : public WindowsFixture {
protected:
    Rect editorFrame() { return editor().frame; }
    std::vector<std::string> writtenNames() const
    {
        std::vector<std::string> names;
        for (const auto& write : world.writes)
            names.push_back(write.name);
        return names;
    }
};

constexpr Rect original { 200, 150, 600, 400 };
constexpr Rect leftHalfTopLeft { 0, 25, 720, 875 };  // below the 25-point menu bar
constexpr Rect maximizedTopLeft { 0, 25, 1440, 875 };

TEST_F(WindowManagerTest, AppliesALayoutInTheVisibleFrameWithFeedback)
{
    manager.apply(L::leftHalf);
    EXPECT_EQ(editorFrame(), leftHalfTopLeft);
    // Size and position twice: the second pair lands whatever an app cut the first one to.
    EXPECT_EQ(writtenNames(), (std::vector<std::string> { "AXSize", "AXPosition", "AXSize", "AXPosition" }));
    EXPECT_EQ(haptics.taps, 1);
    ASSERT_EQ(hud.shown.size(), 1u);
    EXPECT_EQ(hud.shown[0], (std::pair<std::string, std::string> { "Left half", "rectangle.lefthalf.filled" }));
}

TEST_F(WindowManagerTest, KeepsTheGapAroundAndBetweenTiles)
{
    preferences.setWindowGap(10);
    manager.apply(L::leftHalf);
    EXPECT_EQ(editorFrame(), (Rect { 10, 35, 705, 855 }));
}

TEST_F(WindowManagerTest, HapticsFollowTheirPreference)
{
    preferences.setFlag(WindowsPreferences::hapticsKey, false);
    manager.apply(L::maximize);
    EXPECT_EQ(haptics.taps, 0);
    EXPECT_EQ(hud.shown.size(), 1u);
}

TEST_F(WindowManagerTest, ASecondLayoutKeepsTheFirstFrameAndRestoreReturnsToIt)
{
    manager.apply(L::leftHalf);
    manager.apply(L::rightHalf);
    ASSERT_EQ(manager.history().size(), 1u);
    EXPECT_EQ(manager.history()[0].frame, original);

    manager.restore();
    EXPECT_EQ(editorFrame(), original);
    EXPECT_TRUE(manager.history().empty());
    EXPECT_EQ(hud.shown.back(), (std::pair<std::string, std::string> { "Restored", "arrow.uturn.backward" }));

    // Nothing left to restore: nothing happens.
    world.writes.clear();
    manager.restore();
    EXPECT_TRUE(world.writes.empty());
}

TEST_F(WindowManagerTest, HistoryKeepsFiftyAndTheFiftyFirstDropsTheOldest)
{
    for (std::uint32_t number = 1; number <= 51; ++number)
        manager.remember(element(number), { double(number), 0, 100, 100 });
    ASSERT_EQ(manager.history().size(), 50u);
    EXPECT_EQ(manager.history().front().window, element(2));
    EXPECT_EQ(manager.history().back().window, element(51));
}

TEST_F(WindowManagerTest, ReadsTheFrameBackAfterAThirdOfASecondAndWritesOnceMoreOnly)
{
    editor().ignoredWrites = 4; // the app ignores the first size-position pairs
    manager.apply(L::leftHalf);
    EXPECT_EQ(editorFrame(), original);
    runtime.advance(seconds(0.29));
    EXPECT_EQ(world.writes.size(), 4u);
    runtime.advance(seconds(0.01));
    ASSERT_EQ(world.writes.size(), 6u);
    EXPECT_EQ(world.writes[4].name, "AXPosition");
    EXPECT_EQ(world.writes[5].name, "AXSize");
    EXPECT_EQ(editorFrame(), leftHalfTopLeft);

    editor().ignoredWrites = 100; // only once
    world.writes.clear();
    manager.apply(L::rightHalf);
    runtime.advance(seconds(10));
    EXPECT_EQ(world.writes.size(), 6u);
}

TEST_F(WindowManagerTest, RetriesOnlyWhenTheFrameIsOffByMoreThanSixteenPoints)
{
    struct Row {
        const char* name;
        Rect clamp; // top-left box the app keeps itself in
        bool retries;
    };
    const Row rows[] = {
        { "LeftEdgeSixteenOff", { 16, 0, 3000, 3000 }, false },
        { "LeftEdgeSeventeenOff", { 17, 0, 3000, 3000 }, true },
        { "HeightSixteenShort", { 0, 25, 3000, 859 }, false },
        { "HeightSeventeenShort", { 0, 25, 3000, 858 }, true },
        { "TopEdgeAndWidthEightEach", { 0, 33, 712, 3000 }, false },
        { "TopEdgeAndWidthNineEach", { 0, 34, 711, 3000 }, true },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        editor().frame = original;
        editor().clampTo = row.clamp;
        world.writes.clear();
        manager.apply(L::leftHalf);
        runtime.advance(seconds(0.3));
        EXPECT_EQ(world.writes.size(), row.retries ? 6u : 4u);
    }
}

TEST_F(WindowManagerTest, SwitchesTheEnhancedInterfaceOffForTheMoveOnly)
{
    world.apps[0].enhancedInterface = true;
    manager.apply(L::leftHalf);
    auto app = FakeWindowWorld::appElement(editorPid);
    ASSERT_EQ(world.writes.size(), 6u);
    EXPECT_EQ(world.writes.front(), (FakeWindowWorld::Write { app, "AXEnhancedUserInterface", false }));
    EXPECT_EQ(world.writes.back(), (FakeWindowWorld::Write { app, "AXEnhancedUserInterface", true }));
    EXPECT_TRUE(world.apps[0].enhancedInterface);
    EXPECT_EQ(world.timeouts[app.id], seconds(0.35));
}

TEST_F(WindowManagerTest, ToggleMaximizeMaximizesThenRestoresTheRememberedFrame)
{
    manager.toggleMaximize(/*restoreWhenMaximized=*/true);
    EXPECT_EQ(editorFrame(), maximizedTopLeft);
    EXPECT_EQ(hud.shown.back().first, "Maximize");

    manager.toggleMaximize(/*restoreWhenMaximized=*/true);
    EXPECT_EQ(editorFrame(), original);
    EXPECT_EQ(hud.shown.back().first, "Restored");
}

TEST_F(WindowManagerTest, ToggleMaximizeLeavesAMaximizedWindowWhenNotRestoring)
{
    editor().frame = maximizedTopLeft;
    manager.toggleMaximize(/*restoreWhenMaximized=*/false);
    EXPECT_TRUE(world.writes.empty());
    EXPECT_TRUE(hud.shown.empty());
}

TEST_F(WindowManagerTest, ToggleMaximizeCountsFourPointsOffAsMaximized)
{
    // 3 and 4 points off the maximise frame: maximised. With nothing remembered, a centred frame of
    // round(1440 × 0.72) × round(875 × 0.78) = 1037 × 683.
    editor().frame = { 3, 28, 1437, 871 };
    manager.toggleMaximize(true);
    EXPECT_EQ(editorFrame(), (Rect { 201.5, 121, 1037, 683 }));

    // 5 points off: not maximised, so it is maximised.
    editor().frame = { 5, 25, 1435, 875 };
    manager.toggleMaximize(true);
    EXPECT_EQ(editorFrame(), maximizedTopLeft);
}

TEST_F(WindowManagerTest, ToggleMaximizeIgnoresARememberedFrameOfEightyPointsOrLess)
{
    manager.remember(element(editorWindow), { 10, 10, 80, 300 });
    editor().frame = maximizedTopLeft;
    manager.toggleMaximize(true);
    EXPECT_EQ(editorFrame(), (Rect { 201.5, 121, 1037, 683 }));
}

TEST_F(WindowManagerTest, ChoosesTheFocusedThenTheMainThenTheFirstUsableWindow)
{
    world.addWindow({ .number = 12, .pid = editorPid, .frame = { 0, 300, 500, 300 } });
    world.addWindow({ .number = 13, .pid = editorPid, .frame = { 0, 300, 500, 300 } });
    world.apps[0].mainWindow = 12;

    EXPECT_EQ(manager.focusedWindow(), element(editorWindow));
    editor().subrole = "AXFloatingWindow";
    EXPECT_EQ(manager.focusedWindow(), element(12));
    world.window(12)->minimized = true;
    EXPECT_EQ(manager.focusedWindow(), element(13));
    world.window(13)->fullScreen = true;
    EXPECT_EQ(manager.focusedWindow(), std::nullopt);

    world.frontmost.reset();
    EXPECT_EQ(manager.focusedWindow(), std::nullopt);
}

TEST_F(WindowManagerTest, UsableWindowRules)
{
    struct Row {
        const char* name;
        void (*change)(FakeWindowWorld::Window&);
        bool usable;
    };
    const Row rows[] = {
        { "Ordinary", [](FakeWindowWorld::Window&) {}, true },
        { "AnotherRole", [](FakeWindowWorld::Window& w) { w.role = "AXSheet"; }, false },
        { "UnreadableRolePasses", [](FakeWindowWorld::Window& w) { w.role.reset(); }, true },
        { "Floating", [](FakeWindowWorld::Window& w) { w.subrole = "AXFloatingWindow"; }, false },
        { "Minimised", [](FakeWindowWorld::Window& w) { w.minimized = true; }, false },
        { "FullScreen", [](FakeWindowWorld::Window& w) { w.fullScreen = true; }, false },
        { "PositionNotSettable", [](FakeWindowWorld::Window& w) { w.positionSettable = false; }, false },
        { "SettableQuestionFailedPasses", [](FakeWindowWorld::Window& w) { w.positionSettable.reset(); }, true },
        { "SeventyNineWide", [](FakeWindowWorld::Window& w) { w.frame.width = 79; }, false },
        { "SeventyNineTall", [](FakeWindowWorld::Window& w) { w.frame.height = 79; }, false },
        { "EightyByEighty", [](FakeWindowWorld::Window& w) { w.frame.width = w.frame.height = 80; }, true },
        { "UnreadableFramePasses", [](FakeWindowWorld::Window& w) { w.frameReadable = false; }, true },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        FakeWindowWorld::Window window { .number = 50, .pid = editorPid, .frame = { 0, 0, 300, 300 } };
        row.change(window);
        world.remove(50);
        world.addWindow(window);
        EXPECT_EQ(manager.isUsable(element(50)), row.usable);
    }
}

TEST_F(WindowManagerTest, DoesNothingWithoutTrust)
{
    world.trusted = false;
    manager.apply(L::leftHalf);
    manager.toggleMaximize(true);
    manager.restore();
    addRightDisplay();
    manager.moveToDisplay(DisplayDirection::next);
    EXPECT_TRUE(world.writes.empty());
    EXPECT_TRUE(hud.shown.empty());
}

TEST_F(WindowManagerTest, MovesToTheNextDisplayKeepingTheRelativePlaceAndSize)
{
    addRightDisplay();
    manager.moveToDisplay(DisplayDirection::next);
    // 1920 / 1440 across and 1080 / 875 down: 600 × 400 becomes 800 × 494 at the same relative place.
    EXPECT_EQ(editorFrame(), (Rect { 1707, 154, 800, 494 }));
    EXPECT_EQ(hud.shown.back().first, "Next display");

    manager.moveToDisplay(DisplayDirection::next); // wraps around to the main display
    EXPECT_EQ(manager.screen(editorFrame()).value().frame, mainFrame);
    manager.moveToDisplay(DisplayDirection::previous);
    EXPECT_EQ(manager.screen(editorFrame()).value().frame, (Rect { 1440, -180, 1920, 1080 }));
}

TEST_F(WindowManagerTest, MoveToDisplayNeedsASecondDisplay)
{
    manager.moveToDisplay(DisplayDirection::next);
    EXPECT_TRUE(world.writes.empty());
}

TEST_F(WindowManagerTest, PicksTheScreenThatHoldsMostOfTheWindow)
{
    addRightDisplay();
    EXPECT_EQ(manager.screen({ 1300, 100, 600, 400 }).value().frame.minX(), 1440);
    EXPECT_EQ(manager.screen({ 1000, 100, 600, 400 }).value().frame.minX(), 0);
    EXPECT_EQ(manager.screen({ -5000, -5000, 10, 10 }).value().frame, mainFrame);
}

TEST_F(WindowManagerTest, PerformsTheWindowShortcutActions)
{
    EXPECT_TRUE(manager.perform(ShortcutAction::rightHalf));
    EXPECT_EQ(editorFrame(), (Rect { 720, 25, 720, 875 }));
    EXPECT_TRUE(manager.perform(ShortcutAction::restore));
    EXPECT_EQ(editorFrame(), original);
    EXPECT_FALSE(manager.perform(ShortcutAction::togglePanel));
}

} // namespace
} // namespace quillmar
