#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/linux/DBusUserNotices.h"
#include "tests/platform/linux/DesktopTestSupport.h"
#include "tests/platform/linux/FakeDesktop.h"

namespace quillmar {
namespace {

constexpr const char* notify = "org.freedesktop.Notifications.Notify";

std::string notifyArguments(const std::string& summary, const std::string& body)
{
    return "('Quillmar', uint32 0, '', '" + summary + "', '" + body + "', @as [], @a{sv} {}, 4000)";
}

TEST(DBusUserNoticesTest, ANoticeIsANotificationFromQuillmarWithTheDetailAsBody)
{
    FakeDesktop desktop(testBusAddress(), { FakeDesktop::notifications });
    ASSERT_TRUE(desktop.isReady());
    DBusUserNotices notices(testBuses());

    notices.show("Tracking removed", "The link is clean now.");

    ASSERT_TRUE(desktop.waitForCalls(notify, 1));
    EXPECT_EQ(desktop.calls(notify), std::vector { notifyArguments("Tracking removed", "The link is clean now.") });
}

TEST(DBusUserNoticesTest, AskingForAccessibilityIsANoticeUnlessTheFrontEndTakesIt)
{
    FakeDesktop desktop(testBusAddress(), { FakeDesktop::notifications });
    ASSERT_TRUE(desktop.isReady());
    DBusUserNotices notices(testBuses());

    notices.askForAccessibility("Allow Accessibility to paste automatically");
    ASSERT_TRUE(desktop.waitForCalls(notify, 1));

    std::vector<std::string> requests;
    notices.setAccessibilityRequest([&](std::string_view reason) { requests.emplace_back(reason); });
    notices.askForAccessibility("Allow Accessibility to expand snippets");
    // Notices go out in order, so once this one is in, a second request would have been too.
    notices.show("Copied", "");
    ASSERT_TRUE(desktop.waitForCalls(notify, 2));

    EXPECT_EQ(desktop.calls(notify),
        (std::vector { notifyArguments("Allow Accessibility to paste automatically", ""),
            notifyArguments("Copied", "") }));
    EXPECT_EQ(requests, std::vector<std::string> { "Allow Accessibility to expand snippets" });
}

TEST(DBusUserNoticesTest, WithoutANotificationServerOrABusTheNoticeIsOnlyADiagnostic)
{
    FakeDesktop nobody(testBusAddress(), {});
    DBusUserNotices withoutServer(testBuses());
    DBusUserNotices withoutBus(absentBuses());

    withoutServer.show("Copied", "");
    withoutBus.show("Copied", "");

    EXPECT_TRUE(testDiagnostics().waitFor("notices: no notification server took the notice"));
    EXPECT_TRUE(testDiagnostics().waitFor("notices: no session bus"));
}

} // namespace
} // namespace quillmar
