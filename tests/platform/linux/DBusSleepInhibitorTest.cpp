#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <poll.h>

#include "platform/linux/DBusSleepInhibitor.h"
#include "tests/platform/linux/DesktopTestSupport.h"
#include "tests/platform/linux/FakeDesktop.h"

namespace quillmar {
namespace {

// Whether every holder has closed the write end of the pipe logind's hold was given as, waiting at most
// `milliseconds`.
bool holdEnded(int pipe, int milliseconds)
{
    pollfd end { pipe, POLLIN, 0 };
    return ::poll(&end, 1, milliseconds) == 1 && (end.revents & (POLLHUP | POLLIN)) != 0;
}

TEST(DBusSleepInhibitorTest, TheScreenSaverHoldsIdleSleepOffUntilReleasedWithItsCookie)
{
    FakeDesktop desktop(testBusAddress(), { FakeDesktop::screenSaver, FakeDesktop::logind });
    ASSERT_TRUE(desktop.isReady());
    DBusSleepInhibitor inhibitor(testBuses());

    ASSERT_TRUE(inhibitor.inhibit("Keep awake is on").ok());
    EXPECT_TRUE(inhibitor.isInhibiting());
    EXPECT_TRUE(inhibitor.inhibit("Keep awake is on").ok());
    inhibitor.release();

    EXPECT_FALSE(inhibitor.isInhibiting());
    EXPECT_EQ(desktop.calls("org.freedesktop.ScreenSaver.Inhibit"),
        std::vector<std::string> { "('Quillmar', 'Keep awake is on')" });
    EXPECT_EQ(desktop.calls("org.freedesktop.ScreenSaver.UnInhibit"), std::vector<std::string> { "(uint32 42,)" });
    EXPECT_TRUE(desktop.calls("org.freedesktop.login1.Manager.Inhibit").empty());
}

TEST(DBusSleepInhibitorTest, WithoutAScreenSaverLogindHoldsItForAsLongAsItsDescriptorIsOpen)
{
    FakeDesktop desktop(testBusAddress(), { FakeDesktop::logind });
    ASSERT_TRUE(desktop.isReady());
    DBusSleepInhibitor inhibitor(testBuses());

    ASSERT_TRUE(inhibitor.inhibit("Keep awake is on").ok());

    EXPECT_EQ(desktop.calls("org.freedesktop.login1.Manager.Inhibit"),
        std::vector<std::string> { "('idle:sleep', 'Quillmar', 'Keep awake is on', 'block')" });
    ASSERT_GE(desktop.inhibitPipe(), 0);
    EXPECT_FALSE(holdEnded(desktop.inhibitPipe(), 0));
    inhibitor.release();
    EXPECT_TRUE(holdEnded(desktop.inhibitPipe(), static_cast<int>(busDeadline.count())));
    EXPECT_FALSE(inhibitor.isInhibiting());
}

TEST(DBusSleepInhibitorTest, WithNeitherServiceOrNoBusItFailsWithASentence)
{
    FakeDesktop nobody(testBusAddress(), {});
    for (const auto& buses : { testBuses(), absentBuses() }) {
        DBusSleepInhibitor inhibitor(buses);
        auto result = inhibitor.inhibit("Keep awake is on");
        ASSERT_FALSE(result.ok());
        EXPECT_EQ(result.error().code, "keepAwake.unavailable");
        EXPECT_EQ(result.error().message, "This system can't be kept awake.");
        EXPECT_FALSE(inhibitor.isInhibiting());
        inhibitor.release();
    }
}

} // namespace
} // namespace quillmar
