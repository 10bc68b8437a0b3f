#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "core/eventtap/EventTap.h"
#include "core/windows/WindowDragging.h"
#include "tests/eventtap/FakeEventTapSource.h"
#include "tests/windows/WindowsFixture.h"

namespace quillmar {
namespace {

using State = WindowDragging::TitleDragState;
using L = WindowLayout;

constexpr std::uint64_t chordFlags = EventFlags::control | EventFlags::option;

class WindowDraggingTest : public WindowsFixture {
protected:
    WindowDraggingTest() { dragging.configure({ .snap = true, .chordDrags = true }); }

    static InputEvent mouse(std::uint32_t type, Point at, std::uint64_t flags = 0)
    {
        InputEvent event;
        event.type = type;
        event.flags = flags;
        event.location = { at.x, at.y };
        return event;
    }

    std::optional<InputEvent> press(Point at, std::uint64_t flags = 0, std::uint32_t type = EventType::leftMouseDown)
    {
        m_pointer = at;
        return dragging.handle(mouse(type, at, flags));
    }

    // Moves the pointer 10 ms later; when `follows`, the window has moved by the same amount first.
    std::optional<InputEvent> dragTo(Point at, bool follows = true, std::uint32_t type = EventType::leftMouseDragged)
    {
        runtime.advance(seconds(0.01));
        if (follows) {
            editor().frame.x += at.x - m_pointer.x;
            editor().frame.y += at.y - m_pointer.y;
        }
        m_pointer = at;
        return dragging.handle(mouse(type, at));
    }

    std::optional<InputEvent> release(std::uint32_t type = EventType::leftMouseUp)
    {
        auto verdict = dragging.handle(mouse(type, m_pointer));
        return verdict;
    }

    State state() const { return dragging.titleDrag().value().state; }

    // Snaps the editor to the left half by dragging its title bar to the left edge.
    void snapEditorLeft()
    {
        press({ 400, 160 });
        dragTo({ 420, 165 });
        dragTo({ 2, 300 });
        release();
        runtime.runUntilIdle();
    }

    FakeEventTapSource tapSource { runtime };
    EventTap tap { runtime, tapSource };
    RecordingOverlay overlay;
    FakeMouseEvents pointer;
    FakeSystemPreferences system;
    WindowDragging dragging { runtime, tap, { world, world, screens, overlay, pointer, system }, manager, preferences };
    Point m_pointer;
};

constexpr Rect original { 200, 150, 600, 400 };
constexpr Rect leftHalfTopLeft { 0, 25, 720, 875 };


TEST_F(WindowDraggingTest, ClassifiesTheFirstMovement)
{
    struct Row {
        const char* name;
        Point pointerMove;
        Point windowMove;
        Size sizeChange;
        State expected;
    };
    const Row rows[] = {
        { "FollowsExactly", { 20, 5 }, { 20, 5 }, {}, State::confirmed },
        { "CosineOfPointSixFollows", { 10, 0 }, { 6, 8 }, {}, State::confirmed },
        { "CosineOfPointFiveDoesNot", { 10, 0 }, { 5, 8.66 }, {}, State::abandoned },
        { "RatioOfOnePointEightFollows", { 10, 0 }, { 18, 0 }, {}, State::confirmed },
        { "RatioAboveOnePointEightDoesNot", { 10, 0 }, { 18.5, 0 }, {}, State::abandoned },
        { "RatioOfPointTwoFollows", { 50, 0 }, { 10, 0 }, {}, State::confirmed },
        { "RatioBelowPointTwoDoesNot", { 50, 0 }, { 9.5, 0 }, {}, State::abandoned },
        { "WidthChangedByThreeIsAResize", { 10, 0 }, { 0, 0 }, { 3, 0 }, State::resize },
        { "HeightChangedByThreeIsAResize", { 10, 0 }, { 10, 0 }, { 0, -3 }, State::resize },
        { "SizeWithinTwoAndStillWaits", { 10, 0 }, { 0, 0 }, { 2, 2 }, State::undecided },
        { "PointerPastTwentyFourWindowStillAbandons", { 25, 0 }, { 0, 0 }, {}, State::abandoned },
        { "PointerAtTwentyFourWindowStillWaits", { 24, 0 }, { 0, 0 }, {}, State::undecided },
        { "WindowMovedTwoWaits", { 2, 0 }, { 2, 0 }, {}, State::undecided },
        { "WindowMovedWhilePointerStillAbandons", { 0.4, 0 }, { 10, 0 }, {}, State::abandoned },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        editor().frame = original;
        EXPECT_TRUE(press({ 400, 160 })) << "a title drag only listens";
        ASSERT_TRUE(dragging.titleDrag());
        EXPECT_EQ(state(), State::undecided);
        editor().frame.x += row.windowMove.x;
        editor().frame.y += row.windowMove.y;
        editor().frame.width += row.sizeChange.width;
        editor().frame.height += row.sizeChange.height;
        dragTo({ 400 + row.pointerMove.x, 160 + row.pointerMove.y }, /*follows=*/false);
        EXPECT_EQ(state(), row.expected);
        release();
        runtime.runUntilIdle();
    }
}

TEST_F(WindowDraggingTest, AResizeByTheTitleBarRegionNeverSnaps)
{
    press({ 400, 160 });
    editor().frame.width += 50;
    dragTo({ 2, 300 }, /*follows=*/false);
    EXPECT_EQ(state(), State::resize);
    dragTo({ 1, 300 });
    EXPECT_EQ(overlay.shows, 0);
    world.writes.clear();
    release();
    runtime.runUntilIdle();
    EXPECT_TRUE(world.writes.empty());
    EXPECT_TRUE(dragging.snapped().empty());
}

TEST_F(WindowDraggingTest, AnAbandonedDragStaysAbandonedAndIsNoLongerPolled)
{
    press({ 400, 160 });
    dragTo({ 430, 160 }, /*follows=*/false);
    ASSERT_EQ(state(), State::abandoned);
    int polls = world.infoCalls;
    dragTo({ 440, 160 });
    dragTo({ 2, 300 });
    EXPECT_EQ(state(), State::abandoned);
    EXPECT_EQ(world.infoCalls, polls);
    EXPECT_EQ(overlay.shows, 0);
}

TEST_F(WindowDraggingTest, PollsEveryEventUntilConfirmedThenAtMostThirtyTimesASecond)
{
    press({ 400, 160 });
    world.infoCalls = 0;
    dragTo({ 401, 160 }, /*follows=*/false); // undecided: the window has not moved yet
    dragTo({ 402, 160 }, /*follows=*/false);
    EXPECT_EQ(world.infoCalls, 2);
    dragTo({ 420, 160 });
    ASSERT_EQ(state(), State::confirmed);
    world.infoCalls = 0;
    for (int step = 1; step <= 10; ++step) // 100 ms in 10 ms steps: polls at 40 and 80 ms
        dragTo({ 420.0 + step, 160 });
    EXPECT_EQ(world.infoCalls, 2);
}

TEST_F(WindowDraggingTest, AWindowThatDisappearsEndsTheDrag)
{
    press({ 400, 160 });
    dragTo({ 420, 160 });
    runtime.advance(seconds(0.05));
    world.remove(editorWindow);
    dragTo({ 430, 160 }, /*follows=*/false);
    EXPECT_FALSE(dragging.titleDrag());
}

TEST_F(WindowDraggingTest, ShowsTheZoneAndSnapsOnRelease)
{
    press({ 400, 160 });
    dragTo({ 420, 165 });
    dragTo({ 2, 300 });
    ASSERT_TRUE(overlay.visible);
    EXPECT_EQ(*overlay.visible, (Rect { 0, 0, 720, 875 }));
    dragTo({ 300, 300 });
    EXPECT_FALSE(overlay.visible);
    dragTo({ 2, 300 });
    release();
    EXPECT_FALSE(overlay.visible);
    runtime.runUntilIdle();
    EXPECT_EQ(editor().frame, leftHalfTopLeft);
    EXPECT_TRUE(hud.shown.empty()); // snapping gives no feedback
    ASSERT_EQ(dragging.snapped().size(), 1u);
    EXPECT_EQ(dragging.snapped()[0].first, editorWindow);
    EXPECT_EQ(dragging.snapped()[0].second.originalSize, (Size { 600, 400 }));
    EXPECT_EQ(dragging.snapped()[0].second.snappedFrame, leftHalfTopLeft);
    EXPECT_FALSE(dragging.titleDrag());
}

// The right half of the display added by addRightDisplay, top-left.
constexpr Rect rightDisplayRightHalf { 2400, 0, 960, 1080 };
// The right edge of that display, top-left.
constexpr Point rightDisplayRightEdge { 3358, 500 };

TEST_F(WindowDraggingTest, ATitleDragKeepsTheZonesScreenWhenADisplayGoesAwayMidDrag)
{
    addRightDisplay();
    press({ 400, 160 });
    dragTo({ 420, 165 });
    // The second display is gone from the next read on.
    screens.afterRead = [this] { screens.list.resize(1); };
    dragTo(rightDisplayRightEdge);
    ASSERT_TRUE(dragging.titleDrag().value().zoneScreen);
    EXPECT_EQ(dragging.titleDrag().value().zoneScreen->frame, (Rect { 1440, -180, 1920, 1080 }));
    ASSERT_TRUE(overlay.visible);

    // Still gone: no zone on the next event, and nothing to snap to.
    dragTo({ 3350, 500 });
    EXPECT_FALSE(overlay.visible);
    release();
    runtime.runUntilIdle();
    EXPECT_TRUE(dragging.snapped().empty());
}

TEST_F(WindowDraggingTest, AChordDragSnapsOnTheScreenItShowedEvenWhenTheScreensReorder)
{
    addRightDisplay();
    press({ 400, 300 }, chordFlags);
    dragTo(rightDisplayRightEdge, false);
    ASSERT_TRUE(overlay.visible);
    std::swap(screens.list[0], screens.list[1]);
    EXPECT_FALSE(release());
    runtime.runUntilIdle();
    EXPECT_EQ(editor().frame, rightDisplayRightHalf);
}

TEST_F(WindowDraggingTest, KeepsThePointerBelowTheTopSoTheDockDoesNotOpenMissionControl)
{
    dragging.configure({ .snap = true, .chordDrags = false });
    press({ 400, 160 });
    dragTo({ 420, 165 });
    auto verdict = dragTo({ 700, 0.5 });
    ASSERT_TRUE(verdict);
    EXPECT_EQ(verdict->location.y, 1.0);
    // Title drags only listen, so the pointer itself is moved.
    ASSERT_EQ(pointer.warps.size(), 1u);
    EXPECT_EQ(pointer.warps[0].y, 1.0);

    // A filtering registration changes the event itself.
    dragging.configure({ .snap = true, .chordDrags = true });
    verdict = dragTo({ 710, 0.25 });
    ASSERT_TRUE(verdict);
    EXPECT_EQ(verdict->location.y, 1.0);
    EXPECT_EQ(pointer.warps.size(), 1u);
}

TEST_F(WindowDraggingTest, LeavesThePointerAloneWhenTheDockDoesNotOpenMissionControlOnTopDrags)
{
    system.set("com.apple.dock", "enterMissionControlByTopWindowDrag", 0);
    dragging.configure({ .snap = true, .chordDrags = false });
    EXPECT_FALSE(dragging.topDragOpensMissionControl());
    press({ 400, 160 });
    dragTo({ 420, 165 });
    auto verdict = dragTo({ 700, 0.5 });
    ASSERT_TRUE(verdict);
    EXPECT_EQ(verdict->location.y, 0.5);
    EXPECT_TRUE(pointer.warps.empty());
}

TEST_F(WindowDraggingTest, DraggingASnappedWindowAwayRestoresItsSizeUnderThePointer)
{
    snapEditorLeft();
    ASSERT_EQ(editor().frame, leftHalfTopLeft);
    press({ 360, 30 });
    dragTo({ 390, 30 });
    runtime.runUntilIdle();
    // The pointer was halfway along the 720-wide title bar; it stays halfway along the 600-wide one.
    EXPECT_EQ(editor().frame, (Rect { 90, 25, 600, 400 }));
    EXPECT_TRUE(dragging.snapped().empty());
}

TEST_F(WindowDraggingTest, UnsnapsOnlyAWindowStillWithinSixPointsOfItsSnappedSize)
{
    struct Row {
        const char* name;
        double widthChange;
        double heightChange;
        bool restores;
    };
    const Row rows[] = {
        { "Unchanged", 0, 0, true },
        { "WiderByFivePointNine", 5.9, 0, true },
        { "WiderBySix", 6, 0, false },
        { "ShorterBySix", 0, -6, false },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        editor().frame = original;
        dragging.snap(editorWindow, editorPid, L::leftHalf, screens.list[0], { 600, 400 });
        runtime.runUntilIdle();
        Rect now { 30, 25, 720 + row.widthChange, 875 + row.heightChange };
        editor().frame = now;
        dragging.unsnapIfNeeded(editorWindow, editorPid, now, { 390, 30 });
        runtime.runUntilIdle();
        EXPECT_EQ(editor().frame.size() == (Size { 600, 400 }), row.restores);
        EXPECT_TRUE(dragging.snapped().empty());
    }
}

TEST_F(WindowDraggingTest, KeepsTheSnappedSizeWhenRestoringIsOff)
{
    preferences.setFlag(WindowsPreferences::snapRestoresSizeKey, false);
    snapEditorLeft();
    press({ 360, 30 });
    dragTo({ 390, 30 });
    runtime.runUntilIdle();
    EXPECT_EQ(editor().frame.size(), (Size { 720, 875 }));
    EXPECT_EQ(dragging.snapped().size(), 1u);
}

TEST_F(WindowDraggingTest, RemembersAtMostSixtyFourSnappedWindowsDroppingTheOldest)
{
    for (std::uint32_t number = 100; number < 165; ++number) {
        world.addWindow({ .number = number, .pid = editorPid, .frame = { 0, 100, 300, 300 } });
        dragging.snap(number, editorPid, L::rightHalf, screens.list[0], { 300, 300 });
        runtime.runUntilIdle();
    }
    ASSERT_EQ(dragging.snapped().size(), 64u);
    EXPECT_EQ(dragging.snapped().front().first, 101u);
    EXPECT_EQ(dragging.snapped().back().first, 164u);
}

// Modifier drags.

TEST_F(WindowDraggingTest, AChordPressIsHeldBackAndMovesTheWindowPastSixPoints)
{
    EXPECT_FALSE(press({ 400, 300 }, chordFlags));
    ASSERT_TRUE(dragging.gesture());
    EXPECT_EQ(dragging.gesture()->mode, WindowDragging::GestureMode::move);

    EXPECT_FALSE(dragTo({ 405.9, 300 }, false)); // swallowed, and under the threshold
    runtime.runUntilIdle();
    EXPECT_TRUE(world.writesOf("AXPosition").empty());

    EXPECT_FALSE(dragTo({ 450, 320 }, false));
    runtime.runUntilIdle();
    EXPECT_EQ(editor().frame, (Rect { 250, 170, 600, 400 }));
    EXPECT_TRUE(world.writesOf("AXSize").empty());
    EXPECT_FALSE(release());
}

TEST_F(WindowDraggingTest, TheThresholdIsSixPointsFromThePress)
{
    struct Row {
        Point move;
        bool moves;
    };
    const Row rows[] = { { { 5.9, 0 }, false }, { { 6, 0 }, true }, { { 4.3, 4.3 }, true }, { { 4.2, 4.2 }, false } };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.move.x << "," << row.move.y);
        editor().frame = original;
        world.writes.clear();
        press({ 400, 300 }, chordFlags);
        dragTo({ 400 + row.move.x, 300 + row.move.y }, false);
        runtime.runUntilIdle();
        EXPECT_EQ(!world.writesOf("AXPosition").empty(), row.moves);
        pointer.leftDown = false;
        release();
        runtime.advance(seconds(1));
    }
}

TEST_F(WindowDraggingTest, AChordClickGivesThePressBackOnlyWhileTheButtonIsDown)
{
    pointer.leftDown = true;
    press({ 400, 300 }, chordFlags);
    dragTo({ 403, 300 }, false);
    auto verdict = release();
    ASSERT_EQ(pointer.posted.size(), 1u);
    EXPECT_EQ(pointer.posted[0].type, EventType::leftMouseDown);
    EXPECT_EQ(pointer.posted[0].location.x, 400);
    EXPECT_EQ(pointer.posted[0].sourceUserData, 0x514C4D52);
    EXPECT_TRUE(verdict); // the release follows its press through

    pointer.leftDown = false;
    press({ 400, 300 }, chordFlags);
    EXPECT_FALSE(release());
    EXPECT_EQ(pointer.posted.size(), 1u);
}

TEST_F(WindowDraggingTest, ResizeMovesOnlyTheGrabbedEdgesDownToTheMinimumSize)
{
    struct Row {
        const char* name;
        Point grab;
        std::uint32_t button;
        std::uint64_t flags;
        Point move;
        Rect expected;
    };
    const Row rows[] = {
        { "RightButtonBottomRightCorner", { 750, 500 }, EventType::rightMouseDown, chordFlags, { 100, 50 },
            { 200, 150, 700, 450 } },
        { "ShiftLeftButtonBottomRightToTheMinimum", { 750, 500 }, EventType::leftMouseDown,
            chordFlags | EventFlags::shift, { -500, -400 }, { 200, 150, 160, 100 } },
        { "TopLeftKeepsTheBottomRightFixed", { 210, 160 }, EventType::rightMouseDown, chordFlags, { 500, 350 },
            { 640, 450, 160, 100 } },
        { "TopLeftGrowing", { 210, 160 }, EventType::rightMouseDown, chordFlags, { -50, -20 }, { 150, 130, 650, 420 } },
        { "RightEdgeOnlyWidth", { 780, 350 }, EventType::rightMouseDown, chordFlags, { 40, 90 }, { 200, 150, 640, 400 } },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        editor().frame = original;
        bool right = row.button == EventType::rightMouseDown;
        EXPECT_FALSE(press(row.grab, row.flags, row.button));
        ASSERT_TRUE(dragging.gesture());
        EXPECT_EQ(dragging.gesture()->mode, WindowDragging::GestureMode::resize);
        dragTo({ row.grab.x + row.move.x, row.grab.y + row.move.y }, false,
            right ? EventType::rightMouseDragged : EventType::leftMouseDragged);
        runtime.runUntilIdle();
        EXPECT_EQ(editor().frame, row.expected);
        release(right ? EventType::rightMouseUp : EventType::leftMouseUp);
        runtime.advance(seconds(1));
    }
}

TEST_F(WindowDraggingTest, PressesThatAreNotTheChordGoThrough)
{
    struct Row {
        const char* name;
        std::uint64_t flags;
        Point at;
        void (*setUp)(WindowsPreferences&, FakeWindowWorld&);
    };
    const Row rows[] = {
        { "OtherChordChosen", chordFlags, { 400, 300 },
            [](WindowsPreferences& p, FakeWindowWorld&) { p.setDragChord(DragChord::optionCommand); } },
        { "MovingOff", chordFlags, { 400, 300 },
            [](WindowsPreferences& p, FakeWindowWorld&) { p.setFlag(WindowsPreferences::dragMoveKey, false); } },
        { "NoWindowThere", chordFlags, { 1300, 800 }, [](WindowsPreferences&, FakeWindowWorld&) {} },
        { "FullScreenWindow", chordFlags, { 400, 300 },
            [](WindowsPreferences&, FakeWindowWorld& w) { w.windows[0].fullScreen = true; } },
        { "OwnWindow", chordFlags, { 400, 300 },
            [](WindowsPreferences&, FakeWindowWorld& w) { w.windows[0].pid = w.ownPid; } },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        preferences.setDragChord(DragChord::controlOption);
        preferences.setFlag(WindowsPreferences::dragMoveKey, true);
        editor().fullScreen = false;
        editor().pid = editorPid;
        row.setUp(preferences, world);
        dragging.configure({ .snap = true, .chordDrags = true });
        EXPECT_TRUE(press(row.at, row.flags));
        EXPECT_FALSE(dragging.gesture());
    }
}

TEST_F(WindowDraggingTest, TurnsTheEnhancedInterfaceOffForTheGestureAndBackOnOnceTheMoverIsIdle)
{
    world.apps[0].enhancedInterface = true;
    press({ 400, 300 }, chordFlags);
    EXPECT_FALSE(world.apps[0].enhancedInterface);
    dragTo({ 450, 300 }, false);
    release();
    runtime.advance(seconds(0.39));
    EXPECT_FALSE(world.apps[0].enhancedInterface);
    runtime.advance(seconds(0.01));
    runtime.runUntilIdle();
    EXPECT_TRUE(world.apps[0].enhancedInterface);
}

TEST_F(WindowDraggingTest, AChordMoveShowsZonesAndSnapsToThem)
{
    press({ 400, 300 }, chordFlags);
    dragTo({ 200, 300 }, false);
    dragTo({ 2, 300 }, false);
    ASSERT_TRUE(overlay.visible);
    EXPECT_FALSE(release());
    EXPECT_FALSE(overlay.visible);
    runtime.runUntilIdle();
    EXPECT_EQ(editor().frame, leftHalfTopLeft);
    ASSERT_EQ(dragging.snapped().size(), 1u);
    EXPECT_EQ(dragging.snapped()[0].second.originalSize, (Size { 600, 400 }));
}

TEST_F(WindowDraggingTest, ConfigureChoosesTheTapMasks)
{
    constexpr auto bit = eventMaskBit;
    const std::uint64_t left = bit(EventType::leftMouseDown) | bit(EventType::leftMouseUp) | bit(EventType::leftMouseDragged);
    const std::uint64_t right = bit(EventType::rightMouseDown) | bit(EventType::rightMouseUp) | bit(EventType::rightMouseDragged);
    struct Row {
        const char* name;
        bool snap;
        bool chord;
        std::uint64_t filter;
        std::uint64_t listen;
    };
    const Row rows[] = {
        { "SnapOnlyListens", true, false, 0, left },
        { "ChordFilters", false, true, left | right, 0 },
        { "BothFilter", true, true, left | right, 0 },
        { "NeitherUnregisters", false, false, 0, 0 },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        dragging.configure({ .snap = row.snap, .chordDrags = row.chord });
        EXPECT_EQ(tap.mask(ListenOnly::no), row.filter);
        EXPECT_EQ(tap.mask(ListenOnly::yes), row.listen);
        EXPECT_EQ(tap.isRegistered("windows.drag"), row.snap || row.chord);
    }
}

TEST_F(WindowDraggingTest, TurningBothOffHidesTheOverlay)
{
    press({ 400, 160 });
    dragTo({ 420, 165 });
    dragTo({ 2, 300 });
    ASSERT_TRUE(overlay.visible);
    dragging.configure({ .snap = false, .chordDrags = false });
    EXPECT_FALSE(overlay.visible);
    EXPECT_FALSE(dragging.titleDrag());
}

TEST_F(WindowDraggingTest, LetsEverythingThroughWithoutTrust)
{
    world.trusted = false;
    EXPECT_TRUE(press({ 400, 300 }, chordFlags));
    EXPECT_FALSE(dragging.gesture());
    EXPECT_FALSE(dragging.titleDrag());
}

} // namespace
} // namespace quillmar
