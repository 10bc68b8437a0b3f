#include <gmock/gmock.h>

#include <chrono>

#include "tests/eventtap/EventTapFixture.h"

namespace quillmar {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

using EventTapChain = EventTapFixture;

TEST_F(EventTapChain, RunsInRegistrationOrderEachOnThePreviousOutput)
{
    makeTap();
    tap->registerHandler("first", { EventType::keyDown }, ListenOnly::no, [this](const InputEvent& event) {
        ran.push_back("first");
        auto changed = event;
        changed.keyCode += 1;
        return std::optional<InputEvent>(changed);
    });
    registerRecorder("keyUp.only", { EventType::keyUp }, ListenOnly::no);
    tap->registerHandler("second", { EventType::keyDown }, ListenOnly::no, [this](const InputEvent& event) {
        ran.push_back(fmt::format("second saw {}", event.keyCode));
        auto changed = event;
        changed.flags |= EventFlags::command;
        return std::optional<InputEvent>(changed);
    });
    registerRecorder("listener", { EventType::keyDown }, ListenOnly::yes);

    auto verdict = filter(keyDown(4));
    ASSERT_TRUE(verdict);
    EXPECT_EQ(verdict->keyCode, 5u);
    EXPECT_EQ(verdict->flags, EventFlags::command);
    EXPECT_THAT(ran, ElementsAre("first", "second saw 5"));
}

TEST_F(EventTapChain, StopsAtTheFirstHandlerThatSwallows)
{
    makeTap();
    registerRecorder("before", { EventType::keyDown }, ListenOnly::no);
    tap->registerHandler("swallow", { EventType::keyDown }, ListenOnly::no, [this](const InputEvent&) {
        ran.push_back("swallow");
        return std::optional<InputEvent>();
    });
    registerRecorder("after", { EventType::keyDown }, ListenOnly::no);

    EXPECT_EQ(filter(keyDown(1)), std::nullopt);
    EXPECT_THAT(ran, ElementsAre("before", "swallow"));
}

TEST_F(EventTapChain, ReplacedNameKeepsItsPlace)
{
    makeTap();
    registerRecorder("a", { EventType::keyDown }, ListenOnly::no);
    registerRecorder("b", { EventType::keyDown }, ListenOnly::no);
    tap->registerHandler("a", { EventType::keyDown }, ListenOnly::no, [this](const InputEvent& event) {
        ran.push_back("a again");
        return std::optional<InputEvent>(event);
    });
    filter(keyDown(1));
    EXPECT_THAT(ran, ElementsAre("a again", "b"));
}

TEST_F(EventTapChain, HandlersMayChangeRegistrationsWhileItRuns)
{
    makeTap();
    tap->registerHandler("editor", { EventType::keyDown }, ListenOnly::no, [this](const InputEvent& event) {
        ran.push_back("editor");
        tap->unregister("doomed");
        registerRecorder("newcomer", { EventType::keyDown }, ListenOnly::no);
        return std::optional<InputEvent>(event);
    });
    registerRecorder("doomed", { EventType::keyDown }, ListenOnly::no);

    // The chain is fixed when the event arrives; the changes count from the next one.
    filter(keyDown(1));
    EXPECT_THAT(ran, ElementsAre("editor", "doomed"));
    ran.clear();
    filter(keyDown(2));
    EXPECT_THAT(ran, ElementsAre("editor", "newcomer"));
}

TEST_F(EventTapChain, ListenersObserveLaterAndCannotSwallow)
{
    makeTap();
    tap->registerHandler("swallowing.listener", { EventType::scrollWheel }, ListenOnly::yes,
        [this](const InputEvent& event) {
            EXPECT_TRUE(runtime.mainQueue().isMainThread());
            ran.push_back(fmt::format("listener saw {}", event.scrollDeltaY));
            return std::optional<InputEvent>();
        });
    registerRecorder("filter", { EventType::scrollWheel }, ListenOnly::no);
    runtime.runUntilIdle();

    InputEvent scroll;
    scroll.type = EventType::scrollWheel;
    scroll.scrollDeltaY = -3.0;
    source.deliverListen(scroll);
    // The worker only queues the listeners' work: nothing has run when its delivery returns.
    ASSERT_TRUE(runtime.runNext(runtime.uptime()));
    EXPECT_THAT(ran, IsEmpty());
    runtime.runUntilIdle();
    EXPECT_THAT(ran, ElementsAre("listener saw -3"));

    ran.clear();
    EXPECT_EQ(filter(scroll), scroll);
    EXPECT_THAT(ran, ElementsAre("filter"));
}

using EventTapPassThrough = EventTapFixture;

TEST_F(EventTapPassThrough, OwnEventsAndUnwantedTypesSkipTheMainThread)
{
    makeTap();
    registerRecorder("filter", { EventType::keyDown }, ListenOnly::no);
    registerRecorder("listener", { EventType::keyDown }, ListenOnly::yes);
    runtime.runUntilIdle();

    InputEvent own = keyDown(7);
    own.sourceUserData = ownEventUserData;
    InputEvent unwanted = keyDown(7);
    unwanted.type = EventType::keyUp;
    InputEvent untappable = keyDown(7);
    untappable.type = 64;

    for (const auto& event : { own, unwanted, untappable }) {
        SCOPED_TRACE(event.type);
        // Were the main thread asked, the worker would wait out this busy task.
        auto delivery = source.deliverFilter(event);
        runtime.mainQueue().post([this] { runtime.clock().sleepFor(1s); });
        auto arrival = runtime.uptime();
        ASSERT_TRUE(runtime.runNext(arrival));
        EXPECT_TRUE(delivery->done);
        EXPECT_EQ(runtime.uptime(), arrival);
        EXPECT_EQ(runtime.pendingCount(), 1u);
        EXPECT_EQ(delivery->verdict, event);
        runtime.runUntilIdle();
    }
    source.deliverListen(own);
    runtime.runUntilIdle();
    EXPECT_THAT(ran, IsEmpty());
}

struct BudgetRow {
    const char* behaviour;
    Duration mainBusyFor;   // main-thread work queued ahead of the request
    Duration handlerTakes;  // how long the swallowing handler runs
    bool verdictUsed;       // swallowed (the handler's verdict) or passed unchanged
};

void PrintTo(const BudgetRow& row, std::ostream* out)
{
    *out << row.behaviour;
}

class EventTapBudget : public EventTapFixture, public testing::WithParamInterface<BudgetRow> { };

TEST_P(EventTapBudget, DecidesByWhetherTheHandlersStartedInTime)
{
    const auto& row = GetParam();
    makeTap();
    tap->registerHandler("slow.swallow", { EventType::keyDown }, ListenOnly::no, [this, row](const InputEvent&) {
        runtime.clock().sleepFor(row.handlerTakes);
        ran.push_back("slow.swallow");
        return std::optional<InputEvent>();
    });
    runtime.runUntilIdle();

    auto event = keyDown(1);
    auto delivery = source.deliverFilter(event);
    // Queued after the delivery but before the worker's request: the event arrives while the main thread is
    // still at this work.
    if (row.mainBusyFor > Duration::zero())
        runtime.mainQueue().post([this, row] { runtime.clock().sleepFor(row.mainBusyFor); });
    runtime.runUntilIdle();
    runtime.advance(1s);

    ASSERT_TRUE(delivery->done);
    if (row.verdictUsed) {
        EXPECT_EQ(delivery->verdict, std::nullopt);
        EXPECT_THAT(ran, ElementsAre("slow.swallow"));
    } else {
        EXPECT_EQ(delivery->verdict, event);
        EXPECT_THAT(ran, IsEmpty()) << "an abandoned request must not run its handlers later";
    }
}

INSTANTIATE_TEST_SUITE_P(EventTap, EventTapBudget,
    testing::Values(BudgetRow { "idleMainThreadAnswers", Duration::zero(), Duration::zero(), true },
        BudgetRow { "busyPastTheBudgetLetsTheEventPass", 100ms, Duration::zero(), false },
        BudgetRow { "busyJustPastTheBudgetLetsTheEventPass", 61ms, Duration::zero(), false },
        BudgetRow { "busyJustUnderTheBudgetStillAnswers", 59ms, Duration::zero(), true },
        BudgetRow { "startedHandlerIsWaitedForPastTheBudget", Duration::zero(), 100ms, true },
        BudgetRow { "lateStartThenLongHandlerIsWaitedFor", 50ms, 100ms, true }),
    [](const testing::TestParamInfo<BudgetRow>& row) { return std::string(row.param.behaviour); });

} // namespace
} // namespace quillmar
