#include <gtest/gtest.h>

#include <algorithm>

#include "core/shell/AppDelegate.h"
#include "tests/shell/FakeStatusItemHost.h"
#include "tests/shell/ShellFixture.h"

namespace quillmar {
namespace {

using namespace std::chrono_literals;

struct LoggingPorts {
    struct Updater final : SelfUpdater {
        explicit Updater(CallLog& calls) : log(calls) { }
        void prepare() override { log.push_back("updater.prepare"); }
        void checkForUpdatesVisibly() override { log.push_back("updater.check"); }
        CallLog& log;
    };
    struct Presence final : AppPresence {
        explicit Presence(CallLog& calls) : log(calls) { }
        void start() override { log.push_back("presence.start"); }
        CallLog& log;
    };
    struct Startables final : Integrations {
        explicit Startables(CallLog& calls) : log(calls) { }
        void start() override { log.push_back("integrations.start"); }
        CallLog& log;
    };

    explicit LoggingPorts(CallLog& log) : updater(log), presence(log), integrations(log) { }
    AppDelegate::Ports ports() { return { updater, presence, host, integrations }; }

    Updater updater;
    Presence presence;
    FakeStatusItemHost host;
    Startables integrations;
};

bool contains(const CallLog& log, std::string_view entry)
{
    return std::find(log.begin(), log.end(), entry) != log.end();
}

TEST(AppDelegate, LaunchRunsInOrder)
{
    ShellFixture fixture;
    LoggingPorts ports(fixture.log);
    AppDelegate delegate(fixture.runtime, *fixture.services, ports.ports());
    fixture.log.clear();

    delegate.applicationDidFinishLaunching({});
    ASSERT_GE(fixture.log.size(), 4u);
    EXPECT_EQ(fixture.log[0], "updater.prepare");
    EXPECT_EQ(fixture.log[1], "presence.start");
    EXPECT_EQ(fixture.log[2], "clipboard.setCleansLinks on") << "the container starts next";
    EXPECT_EQ(fixture.log.back(), "integrations.start");
    ASSERT_NE(delegate.statusItem(), nullptr);

    // The click action and togglePanel both reach the status item.
    ports.host.click();
    EXPECT_TRUE(ports.host.visible);
    fixture.runtime.advance(1s);
    fixture.services->perform(ShortcutAction::togglePanel);
    EXPECT_FALSE(ports.host.visible);
    EXPECT_FALSE(contains(fixture.log, "updater.check"));
}

TEST(AppDelegate, CheckForUpdatesArgumentChecksThreeSecondsLater)
{
    ShellFixture fixture;
    LoggingPorts ports(fixture.log);
    AppDelegate delegate(fixture.runtime, *fixture.services, ports.ports());
    const std::vector<std::string> arguments { "/usr/bin/quillmar", "--check-for-updates" };
    delegate.applicationDidFinishLaunching(arguments);

    fixture.runtime.advance(2999ms);
    EXPECT_FALSE(contains(fixture.log, "updater.check"));
    fixture.runtime.advance(1ms);
    EXPECT_TRUE(contains(fixture.log, "updater.check"));
}

TEST(AppDelegate, TerminationSavesEverythingThenShutsModulesDownInOrder)
{
    for (bool pending : { false, true }) {
        ShellFixture fixture({}, ShellFixture::Running { .keepAwake = true, .scratchpadSave = pending });
        LoggingPorts ports(fixture.log);
        AppDelegate delegate(fixture.runtime, *fixture.services, ports.ports());
        delegate.applicationDidFinishLaunching({});
        fixture.log.clear();

        delegate.applicationWillTerminate();
        CallLog expected { "keepAwake.stop", "clipboard.flush" };
        if (pending)
            expected.push_back("scratchpad.saveNow");
        for (auto id : allModuleIDs)
            expected.push_back(std::string(name(id)) + ".shutdown");
        EXPECT_EQ(fixture.log, expected) << (pending ? "with" : "without") << " a pending scratchpad save";
    }
}

TEST(AppDelegate, ReopenShowsThePanelOnlyWithoutVisibleWindows)
{
    ShellFixture fixture;
    LoggingPorts ports(fixture.log);
    AppDelegate delegate(fixture.runtime, *fixture.services, ports.ports());
    EXPECT_FALSE(delegate.applicationShouldHandleReopen(false)) << "no status item yet: nothing to show";
    EXPECT_FALSE(ports.host.visible);

    delegate.applicationDidFinishLaunching({});
    EXPECT_TRUE(delegate.applicationShouldHandleReopen(true));
    EXPECT_FALSE(ports.host.visible);
    EXPECT_FALSE(delegate.applicationShouldHandleReopen(false));
    EXPECT_TRUE(ports.host.visible);
    EXPECT_FALSE(delegate.applicationShouldTerminateAfterLastWindowClosed());
}

} // namespace
} // namespace quillmar
