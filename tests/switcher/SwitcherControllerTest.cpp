#include "tests/switcher/SwitcherControllerFixture.h"

#include <gmock/gmock.h>

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using SwitcherControllerTest = SwitcherControllerFixture;

TEST_F(SwitcherControllerTest, EnablingRegistersWithTheTapAndClaimsRecency)
{
    options.previews = false;
    start();
    EXPECT_TRUE(tap.isRegistered("windows.switcher"));
    EXPECT_EQ(tap.mask(ListenOnly::no),
        eventMaskBit(EventType::keyDown) | eventMaskBit(EventType::keyUp) | eventMaskBit(EventType::flagsChanged));
    EXPECT_EQ(recency.claims.at("switcher"), WarmPreviews::no);

    controller->setEnabled(false);
    EXPECT_FALSE(tap.isRegistered("windows.switcher"));
    EXPECT_THAT(recency.claims, IsEmpty());
    EXPECT_FALSE(keyDown(KeyCode::tab, option)) << "a disabled switcher lets Option-Tab through";
}

TEST_F(SwitcherControllerTest, QuickTriggerTabReleaseSwitchesToThePreviousAppWithoutThePanel)
{
    start();
    EXPECT_TRUE(keyDown(KeyCode::tab, option));
    EXPECT_TRUE(keyUp(KeyCode::tab, option)) << "the Tab's key-up belongs to the switch";
    advance(0.05);
    EXPECT_FALSE(flags(0)) << "flags changes always go on";
    EXPECT_THAT(actions.calls, ElementsAre("focus 21"));
    EXPECT_FALSE(controller->isActive());
    advance(1);
    EXPECT_EQ(panel.shows, 0);
    EXPECT_FALSE(clicks.isRunning());
}

TEST_F(SwitcherControllerTest, StepsBeforeThePanelCountFromTheInitialSelection)
{
    start();
    keyDown(KeyCode::tab, option);
    keyDown(KeyCode::tab, option);
    EXPECT_EQ(controller->pendingOffset(), 1);
    flags(0);
    EXPECT_THAT(actions.calls, ElementsAre("focus 31")) << "two steps on from the current window";
}

TEST_F(SwitcherControllerTest, PendingStepsAreClamped)
{
    start();
    keyDown(KeyCode::tab, option);
    for (int step = 0; step < 70; ++step)
        controller->handle(SwitcherKeyEvent { EventType::keyDown, KeyCode::tab, option, false, {} });
    runtime.runUntilIdle();
    EXPECT_EQ(controller->pendingOffset(), 64);
    for (int step = 0; step < 200; ++step)
        controller->handle(SwitcherKeyEvent { EventType::keyDown, KeyCode::tab, option | shift, false, {} });
    runtime.runUntilIdle();
    EXPECT_EQ(controller->pendingOffset(), -64);
}

TEST_F(SwitcherControllerTest, OnlyTheActiveAppSwitchesToItsSecondWindow)
{
    catalog.apps = { { 1, "Mail", "", false, true } };
    catalog.entries.resize(3); // Mail's two windows and Notes' window, whose app is gone
    recency.recent = { 1 };
    start();
    keyDown(KeyCode::tab, option);
    flags(0);
    EXPECT_THAT(actions.calls, ElementsAre("focus 12"));
}

TEST_F(SwitcherControllerTest, ShiftOptionTabStartsFromTheLastCard)
{
    start();
    keyDown(KeyCode::tab, option | shift);
    flags(0);
    EXPECT_THAT(actions.calls, ElementsAre("focus 32"));
}

TEST_F(SwitcherControllerTest, PanelAppearsAfterTheDelayWithTheSelection)
{
    start();
    keyDown(KeyCode::tab, option);
    advance(0.099);
    EXPECT_FALSE(controller->isShown());
    EXPECT_FALSE(controller->isReady());
    advance(0.001);
    EXPECT_TRUE(controller->isShown());
    EXPECT_EQ(panel.shows, 1);
    EXPECT_EQ(selected(), 2u);
    EXPECT_EQ(describe(model.groups()), "Mail*[w11 w12] Notes[w21] Music[w31 w32]");
    EXPECT_DOUBLE_EQ(model.maxWidth(), 1277); // round(1440 × 0.92 − 48)
    EXPECT_DOUBLE_EQ(model.maxHeight(), 765);
}

TEST_F(SwitcherControllerTest, LateCallbackOfAnEndedSessionDoesNothing)
{
    start();
    keyDown(KeyCode::tab, option);
    advance(0.05);
    flags(0);
    auto firstToken = controller->token();
    advance(0.01);
    keyDown(KeyCode::tab, option); // a new session at 0.06 s, its panel due at 0.16 s
    EXPECT_NE(controller->token(), firstToken);
    advance(0.09); // past the first session's 0.1 s
    EXPECT_FALSE(controller->isShown());
    advance(0.01);
    EXPECT_TRUE(controller->isShown());
    EXPECT_EQ(panel.shows, 1);
}

struct ShiftTabRow {
    const char* name;
    double gap; // seconds between pressing Shift and the Tab
    std::size_t expected;
};

TEST_F(SwitcherControllerTest, ShiftJustBeforeTabStepsBackOnce)
{
    const ShiftTabRow rows[] = {
        { "Tab within 0.35 s of Shift", 0.1, 1 },
        { "Tab at 0.35 s", 0.35, 1 },
        { "Tab later is a step of its own", 0.4, 0 },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        if (!controller)
            start();
        openPanel();
        flags(option | shift);
        EXPECT_EQ(selected(), 1u);
        advance(row.gap);
        keyDown(KeyCode::tab, option | shift);
        EXPECT_EQ(selected(), row.expected);
        flags(option);
        keyDown(KeyCode::escape, option);
        EXPECT_FALSE(controller->isActive());
    }
}

TEST_F(SwitcherControllerTest, OnlyTheFirstShiftTabIsTakenAsTheChord)
{
    start();
    openPanel();
    flags(option | shift);
    keyDown(KeyCode::tab, option | shift);
    keyDown(KeyCode::tab, option | shift);
    EXPECT_EQ(selected(), 0u);
}

TEST_F(SwitcherControllerTest, AutorepeatedTabStopsAtTheLastCard)
{
    start();
    openPanel();
    for (int repeat = 0; repeat < 5; ++repeat)
        repeatedKeyDown(KeyCode::tab, option);
    EXPECT_EQ(selected(), 4u);
    keyDown(KeyCode::tab, option);
    EXPECT_EQ(selected(), 0u) << "a fresh Tab wraps";
    repeatedKeyDown(KeyCode::tab, option | shift);
    EXPECT_EQ(selected(), 0u);
}

struct KeyRow {
    const char* name;
    std::vector<std::uint32_t> keys; // pressed with Option held, after the panel shows at card 2
    std::optional<std::size_t> expected;
};

TEST_F(SwitcherControllerTest, NavigationKeys)
{
    const KeyRow rows[] = {
        { "Right", { KeyCode::rightArrow }, 3 },
        { "Left stops at the first card", { KeyCode::leftArrow, KeyCode::leftArrow, KeyCode::leftArrow }, 0 },
        { "Right stops at the last card", { KeyCode::rightArrow, KeyCode::rightArrow, KeyCode::rightArrow }, 4 },
        { "Down jumps to the next app", { KeyCode::downArrow }, 3 },
        { "Down on the last app stays", { KeyCode::downArrow, KeyCode::downArrow }, 3 },
        { "Up on the first app stays", { KeyCode::upArrow, KeyCode::upArrow }, 0 },
        { "grave goes round inside the app", { KeyCode::downArrow, KeyCode::grave, KeyCode::grave }, 3 },
        { "Tab wraps", { KeyCode::tab, KeyCode::tab, KeyCode::tab }, 0 },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        if (!controller)
            start();
        openPanel();
        for (auto key : row.keys)
            EXPECT_TRUE(keyDown(key, option));
        EXPECT_EQ(selected(), row.expected);
        keyDown(KeyCode::escape, option);
    }
}

TEST_F(SwitcherControllerTest, NavigationAndTypingBeforeThePanelAreIgnored)
{
    start();
    keyDown(KeyCode::tab, option);
    keyDown(KeyCode::downArrow, option);
    keyDown(KeyCode::a, option);
    EXPECT_EQ(model.query(), "");
    flags(0);
    EXPECT_THAT(actions.calls, ElementsAre("focus 21"));
}

TEST_F(SwitcherControllerTest, TypingFiltersAndThe64thCharacterIsRefused)
{
    start();
    openPanel();
    EXPECT_TRUE(keyDown(KeyCode::a, option));
    EXPECT_EQ(model.query(), "a") << "the layout is asked without Option, which would type a symbol";
    EXPECT_EQ(describe(model.groups()), "Mail*[w11 w12] Music[w31 w32]");
    for (int index = 1; index < 63; ++index)
        keyDown(KeyCode::a, option);
    EXPECT_EQ(model.query().size(), 63u);
    keyDown(KeyCode::a, option);
    EXPECT_EQ(model.query().size(), 63u);
    EXPECT_THAT(model.groups(), IsEmpty());
    EXPECT_EQ(selected(), std::nullopt);
    keyDown(KeyCode::escape, option);
    EXPECT_EQ(model.query(), "") << "Escape first clears the query";
    EXPECT_TRUE(controller->isActive());
    EXPECT_EQ(model.itemCount(), 5u);
    keyDown(KeyCode::escape, option);
    EXPECT_FALSE(controller->isActive());
    EXPECT_THAT(actions.calls, IsEmpty()) << "Escape cancels";
    EXPECT_EQ(panel.hides, 1);
}

TEST_F(SwitcherControllerTest, DeleteDropsTheLastCharacterAndRefilters)
{
    start();
    openPanel();
    keyDown(KeyCode::a, option); // "a": Mail's and Music's windows
    keyDown(KeyCode::a, option); // "aa": nothing
    EXPECT_THAT(model.groups(), IsEmpty());
    keyDown(KeyCode::deleteBackward, option);
    EXPECT_EQ(model.query(), "a");
    EXPECT_FALSE(model.groups().empty());
    flags(0);
    EXPECT_EQ(actions.calls.size(), 1u);
}

TEST_F(SwitcherControllerTest, ReturnAndClicksOnCardsCommit)
{
    start();
    openPanel();
    keyDown(KeyCode::rightArrow, option);
    EXPECT_TRUE(keyDown(KeyCode::returnKey, option));
    EXPECT_THAT(actions.calls, ElementsAre("focus 31"));
    EXPECT_FALSE(flags(0)) << "the release after a commit is no second switch";
    EXPECT_EQ(actions.calls.size(), 1u);

    openPanel();
    controller->hover(1);
    EXPECT_EQ(selected(), 1u);
    controller->choose(4);
    EXPECT_THAT(actions.calls, ElementsAre("focus 31", "focus 32"));
}

TEST_F(SwitcherControllerTest, WindowlessCardActivatesTheApp)
{
    catalog.apps.push_back({ 4, "Books", "", false, false });
    recency.recent = { 1, 4 };
    start();
    keyDown(KeyCode::tab, option | shift); // the last card: Books, ordered after the apps with windows
    flags(0);
    EXPECT_THAT(actions.calls, ElementsAre("activate 4"));
}

TEST_F(SwitcherControllerTest, ClickOutsideEndsTheSession)
{
    start();
    openPanel();
    EXPECT_TRUE(clicks.isRunning());
    clicks.click();
    EXPECT_FALSE(controller->isActive());
    EXPECT_FALSE(panel.visible);
    EXPECT_FALSE(clicks.isRunning());
    flags(0);
    EXPECT_THAT(actions.calls, IsEmpty());
}

TEST_F(SwitcherControllerTest, SuspensionEndsTheSessionAndPassesEverything)
{
    start();
    openPanel();
    suspended = true;
    EXPECT_FALSE(keyDown(KeyCode::tab, option));
    EXPECT_FALSE(controller->isActive());
    EXPECT_FALSE(keyUp(KeyCode::tab, option));
    suspended = false;
    flags(0);
    EXPECT_THAT(actions.calls, IsEmpty());
}

TEST_F(SwitcherControllerTest, OnlyTheExactTriggerChordStarts)
{
    start();
    EXPECT_FALSE(keyDown(KeyCode::tab, option | EventFlags::control));
    EXPECT_FALSE(keyDown(KeyCode::tab, command));
    EXPECT_FALSE(keyDown(KeyCode::tab, 0));
    EXPECT_FALSE(keyDown(KeyCode::a, option));
    EXPECT_FALSE(keyUp(KeyCode::tab, option));
    EXPECT_FALSE(controller->isActive());
}

TEST_F(SwitcherControllerTest, KeyAfterAMissedReleaseCommitsAndGoesOn)
{
    start();
    keyDown(KeyCode::tab, option);
    EXPECT_FALSE(keyDown(KeyCode::a, 0));
    EXPECT_THAT(actions.calls, ElementsAre("focus 21"));
}

TEST_F(SwitcherControllerTest, CommandTrigger)
{
    options.trigger = SwitcherTrigger::command;
    start();
    EXPECT_FALSE(keyDown(KeyCode::tab, option));
    EXPECT_TRUE(keyDown(KeyCode::tab, command));
    EXPECT_FALSE(flags(command | option));
    EXPECT_TRUE(controller->isActive()) << "Option going down is not the release";
    flags(0);
    EXPECT_THAT(actions.calls, ElementsAre("focus 21"));
    EXPECT_EQ(model.triggerSymbol(), "\u2318");
}

TEST_F(SwitcherControllerTest, PinnedSessionShowsAtOnceAndIgnoresReleases)
{
    start();
    controller->openPinned();
    runtime.runUntilIdle();
    EXPECT_TRUE(controller->isShown());
    EXPECT_TRUE(model.isPinned());
    EXPECT_TRUE(keyDown(KeyCode::tab, 0));
    flags(0);
    EXPECT_TRUE(controller->isActive());
    EXPECT_EQ(selected(), 3u);
    keyDown(KeyCode::returnKey, 0);
    EXPECT_THAT(actions.calls, ElementsAre("focus 31"));
}

TEST_F(SwitcherControllerTest, CloseRemovesTheCardOnceTheWindowIsGone)
{
    start();
    openPanel();
    keyDown(KeyCode::leftArrow, option);
    keyDown(KeyCode::leftArrow, option); // Mail's Inbox
    EXPECT_TRUE(keyDown(KeyCode::w, option));
    EXPECT_THAT(actions.calls, ElementsAre("close 11"));
    EXPECT_TRUE(model.closing().contains("w11"));
    catalog.removeWindow(11);
    advance(0.299);
    EXPECT_EQ(model.itemCount(), 5u);
    advance(0.001);
    EXPECT_EQ(describe(model.groups()), "Mail*[w12] Notes[w21] Music[w31 w32]");
    EXPECT_THAT(model.closing(), IsEmpty());
    EXPECT_EQ(selected(), 0u);
}

TEST_F(SwitcherControllerTest, CloseThatTheAppKeepsClearsTheMark)
{
    start();
    openPanel();
    keyDown(KeyCode::w, option); // Notes' window
    EXPECT_TRUE(model.closing().contains("w21"));
    advance(0.3);
    EXPECT_THAT(model.closing(), IsEmpty());
    EXPECT_EQ(model.itemCount(), 5u);

    actions.closeWorks = false;
    keyDown(KeyCode::w, option);
    EXPECT_THAT(model.closing(), IsEmpty());
}

TEST_F(SwitcherControllerTest, ActionKeysNeedThePreferenceAndAnEmptyQuery)
{
    options.actionKeys = false;
    start();
    openPanel();
    keyDown(KeyCode::w, option);
    EXPECT_THAT(actions.calls, IsEmpty());
    EXPECT_EQ(model.query(), "w") << "with action keys off, w is typed";
    keyDown(KeyCode::escape, option);
    keyDown(KeyCode::escape, option);

    options.actionKeys = true;
    openPanel();
    keyDown(KeyCode::a, option);
    keyDown(KeyCode::q, option);
    EXPECT_EQ(model.query(), "aq");
    EXPECT_THAT(terminator.terminated, IsEmpty());
}

TEST_F(SwitcherControllerTest, QuitRemovesTheAppsCardsOnceItHasExited)
{
    start();
    openPanel();
    keyDown(KeyCode::q, option); // Notes: one window, no second press
    EXPECT_THAT(terminator.terminated, ElementsAre(2));
    repeatedKeyDown(KeyCode::q, option, "q");
    EXPECT_THAT(terminator.terminated, ElementsAre(2)) << "repeats are ignored";
    advance(0.5);
    EXPECT_EQ(model.itemCount(), 5u) << "still running at the first check";
    terminator.exited.insert(2);
    advance(0.5);
    EXPECT_EQ(describe(model.groups()), "Mail*[w11 w12] Music[w31 w32]");
}

TEST_F(SwitcherControllerTest, QuitThatTheAppDeclinesClearsTheMarksAfterTheLastCheck)
{
    start();
    openPanel();
    keyDown(KeyCode::q, option);
    advance(0.5 * 5);
    EXPECT_TRUE(model.closing().contains("w21"));
    advance(0.5);
    EXPECT_THAT(model.closing(), IsEmpty());
    EXPECT_EQ(model.itemCount(), 5u);
}

TEST_F(SwitcherControllerTest, QuittingAnAppOfSeveralWindowsAsksForASecondPress)
{
    start();
    openPanel();
    keyDown(KeyCode::rightArrow, option); // Music, two windows
    keyDown(KeyCode::q, option);
    EXPECT_THAT(terminator.terminated, IsEmpty());
    ASSERT_TRUE(model.armedAction());
    EXPECT_EQ(model.armedAction()->itemID, "w31");
    advance(1.6);
    keyDown(KeyCode::q, option);
    EXPECT_THAT(terminator.terminated, IsEmpty()) << "too late: armed again";
    advance(1);
    keyDown(KeyCode::q, option);
    EXPECT_THAT(terminator.terminated, ElementsAre(3));
    EXPECT_TRUE(model.closing().contains("w31"));
    EXPECT_TRUE(model.closing().contains("w32"));

    keyDown(KeyCode::leftArrow, option);
    keyDown(KeyCode::leftArrow, option);
    keyDown(KeyCode::q, option); // arms Mail's Draft
    EXPECT_EQ(model.armedAction().value().itemID, "w12");
    keyDown(KeyCode::leftArrow, option);
    EXPECT_FALSE(model.armedAction()) << "moving away disarms";
}

TEST_F(SwitcherControllerTest, DisablingEndsTheSession)
{
    start();
    openPanel();
    controller->setEnabled(false);
    EXPECT_FALSE(controller->isActive());
    EXPECT_FALSE(panel.visible);
    EXPECT_EQ(model.itemCount(), 0u);
}

} // namespace
} // namespace quillmar
