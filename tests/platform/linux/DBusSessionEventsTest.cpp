#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

#include "platform/linux/DBusSessionEvents.h"
#include "tests/platform/linux/DesktopTestSupport.h"
#include "tests/platform/linux/FakeDesktop.h"

namespace quillmar {
namespace {

constexpr const char* sleepPath = "/org/freedesktop/login1";
constexpr const char* manager = "org.freedesktop.login1.Manager";
constexpr const char* session = "org.freedesktop.login1.Session";

// Handlers record what reached them and whether on the main thread.
struct Observer {
    std::vector<SessionEvent> events;
    bool offMainThread = false;
};

class DBusSessionEventsTest : public testing::Test {
protected:
    std::unique_ptr<DBusSessionEvents> observe(Observer& observer, const std::string& sessionId = "c7",
        const DBusBuses& buses = testBuses())
    {
        auto events = std::make_unique<DBusSessionEvents>(m_main, buses, sessionId);
        events->startObserving([this, &observer](SessionEvent event) {
            observer.events.push_back(event);
            observer.offMainThread |= !m_main.isMainThread();
        });
        EXPECT_TRUE(events->waitUntilSettled(busDeadline));
        return events;
    }

    // Runs on the main queue what the backend has received of the signals sent so far.
    void deliver(DBusSessionEvents& events)
    {
        EXPECT_TRUE(events.waitUntilSettled(busDeadline));
        m_main.runPosted();
    }

    void replaceDesktop(const std::vector<std::string>& names)
    {
        m_fake.reset();
        m_fake = std::make_unique<FakeDesktop>(testBusAddress(), names);
    }

    std::unique_ptr<FakeDesktop> m_fake = std::make_unique<FakeDesktop>(testBusAddress(),
        std::vector<std::string> { FakeDesktop::logind, FakeDesktop::screenSaver, "org.gnome.ScreenSaver",
            "org.mate.ScreenSaver", "org.cinnamon.ScreenSaver" });
    WaitingMainQueue m_main;
};

struct Signal {
    const char* name;
    std::string path;
    const char* interface;
    const char* member;
    // A variant of the same signal that must be ignored (the end of sleep or of the screen saver, another session's
    // lock), sent first; null path when there is none.
    std::string ignoredPath;
    bool takesFlag;
    SessionEvent expected;
};

class SessionSignalTest : public DBusSessionEventsTest, public testing::WithParamInterface<Signal> { };

TEST_P(SessionSignalTest, ReachesTheHandlerOnTheMainQueueAndOnlyAtTheStart)
{
    ASSERT_TRUE(m_fake->isReady());
    const auto& signal = GetParam();
    Observer observer;
    auto events = observe(observer);

    if (signal.takesFlag) {
        m_fake->emit(signal.path, signal.interface, signal.member, g_variant_new("(b)", FALSE));
        m_fake->emit(signal.path, signal.interface, signal.member, g_variant_new("(b)", TRUE));
    } else {
        m_fake->emit(signal.ignoredPath, signal.interface, signal.member, nullptr);
        m_fake->emit(signal.path, signal.interface, signal.member, nullptr);
    }

    deliver(*events);
    EXPECT_EQ(observer.events, std::vector { signal.expected });
    EXPECT_FALSE(observer.offMainThread);
}

INSTANTIATE_TEST_SUITE_P(Signals, SessionSignalTest,
    testing::Values(
        Signal { "LogindSleep", sleepPath, manager, "PrepareForSleep", {}, true, SessionEvent::systemWillSleep },
        Signal { "LogindLockOfThisSession", "/org/freedesktop/login1/session/c7", session, "Lock",
            "/org/freedesktop/login1/session/c8", false, SessionEvent::screenLocked },
        Signal { "FreedesktopScreenSaver", "/org/freedesktop/ScreenSaver", "org.freedesktop.ScreenSaver",
            "ActiveChanged", {}, true, SessionEvent::screenLocked },
        Signal { "GnomeScreenSaver", "/org/gnome/ScreenSaver", "org.gnome.ScreenSaver", "ActiveChanged", {}, true,
            SessionEvent::screenLocked },
        Signal { "CinnamonScreenSaver", "/org/cinnamon/ScreenSaver", "org.cinnamon.ScreenSaver", "ActiveChanged", {},
            true, SessionEvent::screenLocked }),
    [](const testing::TestParamInfo<Signal>& row) { return row.param.name; });

TEST_F(DBusSessionEventsTest, WithoutASessionIdTheLockOfTheProcessSessionCounts)
{
    ASSERT_TRUE(m_fake->isReady());
    Observer observer;
    auto events = observe(observer, /*sessionId=*/"");

    m_fake->emit(FakeDesktop::sessionOfProcess, session, "Lock", nullptr);

    deliver(*events);
    EXPECT_EQ(observer.events, std::vector { SessionEvent::screenLocked });
    EXPECT_EQ(m_fake->calls("org.freedesktop.login1.Manager.GetSessionByPID"),
        std::vector { "(uint32 " + std::to_string(::getpid()) + ",)" });
}

TEST_F(DBusSessionEventsTest, StopObservingEndsDeliveryAndStartingAgainResumesIt)
{
    ASSERT_TRUE(m_fake->isReady());
    Observer observer;
    auto events = observe(observer);
    auto record = [&](SessionEvent event) { observer.events.push_back(event); };
    events->stopObserving();
    m_fake->emit(sleepPath, manager, "PrepareForSleep", g_variant_new("(b)", TRUE));
    deliver(*events);
    EXPECT_TRUE(observer.events.empty());

    // Received and posted while observing, but run only after a stop and a new start: dropped.
    events->startObserving(record);
    ASSERT_TRUE(events->waitUntilSettled(busDeadline));
    m_fake->emit(sleepPath, manager, "PrepareForSleep", g_variant_new("(b)", TRUE));
    ASSERT_TRUE(events->waitUntilSettled(busDeadline));
    events->stopObserving();
    events->startObserving(record);
    deliver(*events);
    EXPECT_TRUE(observer.events.empty());

    m_fake->emit("/org/freedesktop/ScreenSaver", "org.freedesktop.ScreenSaver", "ActiveChanged",
        g_variant_new("(b)", TRUE));
    deliver(*events);
    EXPECT_EQ(observer.events, std::vector { SessionEvent::screenLocked });
}

TEST_F(DBusSessionEventsTest, WithoutBusesObservingQuietlyDoesNothing)
{
    Observer observer;
    auto events = observe(observer, "c7", absentBuses());

    EXPECT_TRUE(testDiagnostics().waitFor("session events: no system bus"));
    EXPECT_TRUE(testDiagnostics().waitFor("session events: no session bus"));
    events->stopObserving();
    deliver(*events);
    EXPECT_TRUE(observer.events.empty());
}

TEST_F(DBusSessionEventsTest, WithoutLogindTheScreenSaverStillCounts)
{
    replaceDesktop({ FakeDesktop::screenSaver });
    ASSERT_TRUE(m_fake->isReady());
    Observer observer;
    auto events = observe(observer);

    EXPECT_TRUE(testDiagnostics().waitFor("session events: logind knows no session 'c7'"));
    m_fake->emit("/ScreenSaver", "org.freedesktop.ScreenSaver", "ActiveChanged", g_variant_new("(b)", TRUE));
    deliver(*events);
    EXPECT_EQ(observer.events, std::vector { SessionEvent::screenLocked });
}

} // namespace
} // namespace quillmar
