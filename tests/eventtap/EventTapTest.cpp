#include <gmock/gmock.h>

#include "platform/null/NullEventTapPorts.h"
#include "tests/eventtap/EventTapFixture.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint64_t bit(std::uint32_t type)
{
    return std::uint64_t { 1 } << type;
}

struct MaskRegistration {
    const char* name;
    std::vector<std::uint32_t> types;
    ListenOnly listenOnly;
};

struct MaskRow {
    const char* behaviour;
    std::vector<MaskRegistration> registrations;
    std::uint64_t filterMask;
    std::uint64_t listenMask;
};

using EventTapMasks = EventTapFixture;

TEST_F(EventTapMasks, AreTheUnionOfEachKindsTappableTypes)
{
    const MaskRow rows[] = {
        { "nothing registered selects nothing", {}, 0, 0 },
        { "filtering and listen-only registrations fill separate masks",
            { { "a", { EventType::keyDown, EventType::keyUp }, ListenOnly::no },
                { "b", { EventType::mouseMoved }, ListenOnly::yes } },
            bit(10) | bit(11), bit(5) },
        { "registrations of one kind are ORed together",
            { { "a", { EventType::keyDown }, ListenOnly::no },
                { "b", { EventType::keyDown, EventType::flagsChanged }, ListenOnly::no } },
            bit(10) | bit(12), 0 },
        { "types of 64 and above are left out",
            { { "a", { 1, 64, 100, 0xFFFFFFFF }, ListenOnly::no } }, bit(1), 0 },
        { "type 63 is the last one a tap can select", { { "a", { 63 }, ListenOnly::yes } }, 0, bit(63) },
        { "a registration of only untappable types adds nothing", { { "a", { 64 }, ListenOnly::no } }, 0, 0 },
        { "re-registering a name replaces its types and kind",
            { { "a", { EventType::keyDown }, ListenOnly::no },
                { "a", { EventType::scrollWheel }, ListenOnly::yes } },
            0, bit(22) },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.behaviour);
        makeTap();
        for (const auto& registration : row.registrations)
            registerRecorder(registration.name, registration.types, registration.listenOnly);
        EXPECT_EQ(tap->mask(ListenOnly::no), row.filterMask);
        EXPECT_EQ(tap->mask(ListenOnly::yes), row.listenMask);
        runtime.runUntilIdle();
        EXPECT_EQ(source.tapMask(TapKind::filter), row.filterMask);
        EXPECT_EQ(source.tapMask(TapKind::listenOnly), row.listenMask);
        tap.reset();
        EXPECT_FALSE(source.hasTap(TapKind::filter));
        EXPECT_FALSE(source.hasTap(TapKind::listenOnly));
    }
}

TEST_F(EventTapMasks, AreZeroWhileUntrustedAndComeBackWithTrust)
{
    source.trusted = false;
    makeTap();
    EXPECT_FALSE(tap->isTrusted());
    registerRecorder("windows.drag", { EventType::leftMouseDragged }, ListenOnly::no);
    registerRecorder("clipboard.watch", { EventType::keyDown }, ListenOnly::yes);
    EXPECT_EQ(tap->mask(ListenOnly::no), 0u);
    EXPECT_EQ(tap->mask(ListenOnly::yes), 0u);
    EXPECT_THAT(takeCalls(), IsEmpty());

    source.trusted = true;
    EXPECT_TRUE(tap->refreshTrust());
    EXPECT_EQ(tap->mask(ListenOnly::no), bit(6));
    EXPECT_EQ(tap->mask(ListenOnly::yes), bit(10));
    EXPECT_THAT(takeCalls(), ElementsAre("create filter 0x40", "create listen-only 0x400"));

    EXPECT_TRUE(tap->refreshTrust());
    EXPECT_THAT(takeCalls(), IsEmpty());

    source.trusted = false;
    EXPECT_FALSE(tap->refreshTrust());
    EXPECT_EQ(tap->mask(ListenOnly::no), 0u);
    EXPECT_THAT(takeCalls(), ElementsAre("remove filter", "remove listen-only"));
}

using EventTapTaps = EventTapFixture;

TEST_F(EventTapTaps, AreRecreatedOnlyWhenTheirMaskChanges)
{
    makeTap();
    EXPECT_THAT(takeCalls(), IsEmpty());

    registerRecorder("a", { EventType::keyDown }, ListenOnly::no);
    EXPECT_THAT(takeCalls(), ElementsAre("create filter 0x400"));

    registerRecorder("b", { EventType::keyUp }, ListenOnly::no);
    EXPECT_THAT(takeCalls(), ElementsAre("remove filter", "create filter 0xc00"));

    registerRecorder("c", { EventType::mouseMoved }, ListenOnly::yes);
    EXPECT_THAT(takeCalls(), ElementsAre("create listen-only 0x20"));

    // Changes that leave both masks as they were.
    registerRecorder("b", { EventType::keyUp }, ListenOnly::no);
    registerRecorder("d", { EventType::keyDown, 70 }, ListenOnly::no);
    tap->unregister("d");
    tap->unregister("no.such.name");
    EXPECT_THAT(takeCalls(), IsEmpty());

    tap->unregister("a");
    EXPECT_THAT(takeCalls(), ElementsAre("remove filter", "create filter 0x800"));
    tap->unregister("b");
    EXPECT_THAT(takeCalls(), ElementsAre("remove filter"));
    EXPECT_TRUE(source.hasTap(TapKind::listenOnly));
    EXPECT_FALSE(tap->isRegistered("b"));
    EXPECT_TRUE(tap->isRegistered("c"));
}

TEST_F(EventTapTaps, RefusedTapIsReportedAndTriedAgainOnTheNextChange)
{
    source.refuseTaps = true;
    makeTap();
    registerRecorder("a", { EventType::keyDown }, ListenOnly::no);
    EXPECT_THAT(takeCalls(), ElementsAre("create filter 0x400"));
    EXPECT_FALSE(source.hasTap(TapKind::filter));
    EXPECT_THAT(diagnostics, ElementsAre("eventtap: the system refused the filter tap for mask 0x400"));

    // Nothing installed, so nothing to remove before trying again.
    source.refuseTaps = false;
    registerRecorder("b", { EventType::keyUp }, ListenOnly::no);
    EXPECT_THAT(takeCalls(), ElementsAre("create filter 0xc00"));
}

struct DisableRow {
    const char* behaviour;
    TapKind kind;
    TapDisableReason reason;
    const char* expectedCall;
};

TEST_F(EventTapTaps, AreEnabledAgainAtOnceWhenTheSystemDisablesThem)
{
    const DisableRow rows[] = {
        { "filter tap after a timeout", TapKind::filter, TapDisableReason::timeout, "enable filter" },
        { "filter tap after user input", TapKind::filter, TapDisableReason::userInput, "enable filter" },
        { "listen-only tap after user input", TapKind::listenOnly, TapDisableReason::userInput,
            "enable listen-only" },
    };
    makeTap();
    registerRecorder("a", { EventType::keyDown }, ListenOnly::no);
    registerRecorder("b", { EventType::keyDown }, ListenOnly::yes);
    takeCalls();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.behaviour);
        source.disable(row.kind, row.reason);
        EXPECT_THAT(takeCalls(), ElementsAre(row.expectedCall));
    }
}

TEST_F(EventTapTaps, GoWithTheTapAndLeaveQueuedHandlerWorkInert)
{
    makeTap();
    registerRecorder("a", { EventType::keyDown }, ListenOnly::no);
    registerRecorder("b", { EventType::keyDown }, ListenOnly::yes);
    takeCalls();

    // The listen-only event reaches the worker, which queues it for the main thread; the tap goes first.
    source.deliverListen(keyDown(1));
    ASSERT_TRUE(runtime.runNext(runtime.uptime()));
    ASSERT_EQ(runtime.pendingCount(), 1u);
    tap.reset();
    runtime.runUntilIdle();
    EXPECT_THAT(source.calls, ElementsAre("remove filter", "remove listen-only"));
    EXPECT_THAT(ran, IsEmpty());
}

TEST(EventTapNullSource, TrustsNothingAndTapsNothing)
{
    VirtualRuntime runtime;
    NullEventTapSource source;
    EventTap tap(runtime, source);
    tap.registerHandler("a", { EventType::keyDown }, ListenOnly::no,
        [](const InputEvent& event) { return std::optional<InputEvent>(event); });
    runtime.runUntilIdle();
    EXPECT_FALSE(tap.isTrusted());
    EXPECT_FALSE(tap.refreshTrust());
    EXPECT_EQ(tap.mask(ListenOnly::no), 0u);
    EXPECT_FALSE(tap.postKey(0, 0));
}

using EventTapPostKey = EventTapFixture;

TEST_F(EventTapPostKey, PostsAMarkedPressThatOurFilterLetsThrough)
{
    makeTap();
    tap->registerHandler("swallow.all", { EventType::keyDown, EventType::keyUp }, ListenOnly::no,
        [this](const InputEvent&) {
            ran.push_back("swallow.all");
            return std::optional<InputEvent>();
        });
    EXPECT_TRUE(tap->postKey(9, EventFlags::command | EventFlags::shift));
    ASSERT_EQ(source.posted.size(), 2u);
    EXPECT_EQ(source.posted[0].type, EventType::keyDown);
    EXPECT_EQ(source.posted[1].type, EventType::keyUp);
    for (const auto& event : source.posted) {
        EXPECT_EQ(event.keyCode, 9u);
        EXPECT_EQ(event.flags, EventFlags::command | EventFlags::shift);
        EXPECT_EQ(event.sourceUserData, 0x514C4D52);
        EXPECT_EQ(filter(event), event);
    }
    EXPECT_THAT(ran, IsEmpty());

    source.trusted = false;
    EXPECT_FALSE(tap->postKey(9, 0));
}

using EventTapDeathTest = EventTapFixture;

TEST_F(EventTapDeathTest, TrapsWhenUsedOffTheMainThread)
{
    makeTap();
    auto queue = runtime.makeSerialQueue("com.quillmar.test");
    const std::function<void()> uses[] = {
        [this] { registerRecorder("a", { EventType::keyDown }, ListenOnly::no); },
        [this] { tap->unregister("a"); },
        [this] { (void)tap->mask(ListenOnly::no); },
        [this] { (void)tap->runFilters(keyDown(1)); },
    };
    for (const auto& use : uses) {
        // The task is queued inside the child, so the parent's timeline keeps nothing of it.
        EXPECT_DEATH(
            {
                queue->post(use);
                runtime.runUntilIdle();
            },
            "EventTap used off the main thread");
    }
}

} // namespace
} // namespace quillmar
