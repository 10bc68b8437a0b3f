#include <gtest/gtest.h>

#include <signal.h>

#include <xkbcommon/xkbcommon-keysyms.h>

#include "tests/platform/linux/support/XServer.h"

namespace quillmar {
namespace {

using testing::ChildProcess;
constexpr auto deadline = &ChildProcess::deadline;

class KeysCommandsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_server = testing::sharedXServer();
        ASSERT_NE(m_server, nullptr);
        if (!testing::isInstalled("xdotool"))
            GTEST_FAIL() << "xdotool isn't installed: run scripts/install-deps (package xdotool).";
    }

    // The binary against the test's X server, once it said on stderr that it is ready.
    std::optional<ChildProcess> startReady(const std::vector<std::string>& words, const std::string& ready)
    {
        std::vector<std::string> arguments { QUILLMAR_BINARY };
        arguments.insert(arguments.end(), words.begin(), words.end());
        auto child = ChildProcess::start(arguments, { m_server->environment() });
        EXPECT_TRUE(child);
        if (child) {
            EXPECT_EQ(child->readErrorLine(deadline()), ready);
        }
        return child;
    }

    testing::XServer* m_server = nullptr;
};

TEST_F(KeysCommandsTest, HotKeyTestPrintsEachPressUntilInterrupted)
{
    auto child = startReady({ "hotkey", "test", "ctrl+alt+space" }, "Press ⌃⌥Space; Ctrl+C stops.");
    ASSERT_TRUE(child);
    ASSERT_TRUE(m_server->run({ "xdotool", "key", "ctrl+alt+space", "space", "ctrl+alt+space" }));
    EXPECT_EQ(child->readLine(deadline()), "⌃⌥Space pressed");
    EXPECT_EQ(child->readLine(deadline()), "⌃⌥Space pressed");
    child->signal(SIGINT);
    EXPECT_EQ(child->wait(deadline()), 0);
}

TEST_F(KeysCommandsTest, HotKeyTestRefusesACombinationAnotherClientHolds)
{
    auto& connection = m_server->connection();
    auto vKey = m_server->keycode(XKB_KEY_v);
    xcb_grab_key(connection.raw(), 0, connection.root(), XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1, vKey,
        XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    ASSERT_TRUE(connection.roundTrip());
    auto child = ChildProcess::start({ QUILLMAR_BINARY, "hotkey", "test", "⌃⌥V" }, { m_server->environment() });
    ASSERT_TRUE(child);
    EXPECT_EQ(child->readErrorLine(deadline()), "⌃⌥V can't be used: Another application already uses that shortcut.");
    EXPECT_EQ(child->wait(deadline()), 1);
    xcb_ungrab_key(connection.raw(), vKey, connection.root(), XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1);
    EXPECT_TRUE(connection.roundTrip());
}

TEST_F(KeysCommandsTest, ListenPrintsPressesAsTheCoreSeesThemWithoutTakingThem)
{
    auto child = startReady({ "keys", "listen", "--count", "2", "--json" }, "Listening to key presses; Ctrl+C stops.");
    ASSERT_TRUE(child);
    ASSERT_TRUE(m_server->run({ "xdotool", "key", "ctrl+a", "shift+2" }));
    EXPECT_EQ(child->readLine(deadline()),
        R"({"keyCode":0,"modifiers":4096,"label":"A","display":"⌃A","characters":"\u0001"})");
    EXPECT_EQ(child->readLine(deadline()), R"({"keyCode":19,"modifiers":512,"label":"2","display":"⇧2","characters":"@"})");
    EXPECT_EQ(child->wait(deadline()), 0);
}

TEST(KeysCommands, SayWhyOutsideAnX11Session)
{
    struct Row {
        std::vector<std::string> words;
        const char* sentence;
        int code;
    };
    const Row rows[] = {
        { { "keys", "listen" }, "Key events need an X11 session for now.", 1 },
        { { "hotkey", "test", "⌃⌥Space" }, "Global shortcuts need an X11 session for now.", 1 },
        { { "hotkey", "test", "ctrl+banana" }, "\"ctrl+banana\" isn't a shortcut; write it like ⌃⌥Space or ctrl+alt+space.", 2 },
    };
    for (const auto& row : rows) {
        std::vector<std::string> arguments { QUILLMAR_BINARY };
        arguments.insert(arguments.end(), row.words.begin(), row.words.end());
        auto child = ChildProcess::start(arguments, { "DISPLAY=", "WAYLAND_DISPLAY=wayland-0" });
        ASSERT_TRUE(child);
        EXPECT_EQ(child->readErrorLine(deadline()), row.sentence) << row.words.front();
        EXPECT_EQ(child->wait(deadline()), row.code) << row.words.front();
    }
}

} // namespace
} // namespace quillmar
