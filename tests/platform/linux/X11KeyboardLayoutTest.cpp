#include <gtest/gtest.h>

#include <xkbcommon/xkbcommon-keysyms.h>

#include "core/hotkeys/Shortcut.h"
#include "platform/linux/X11KeyTable.h"
#include "platform/linux/X11KeyboardLayout.h"
#include "tests/platform/linux/support/XServer.h"

namespace quillmar {
namespace {

constexpr auto deadline = std::chrono::seconds(5);

class X11KeyboardLayoutTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_server = testing::sharedXServer();
        ASSERT_NE(m_server, nullptr);
        if (!testing::isInstalled("setxkbmap"))
            GTEST_SKIP() << "setxkbmap isn't installed: run scripts/install-deps (package x11-xkb-utils).";
        auto connection = X11Connection::open(m_server->display());
        ASSERT_TRUE(connection);
        auto layout = X11KeyboardLayout::create(std::move(connection).value());
        ASSERT_TRUE(layout) << layout.error().context;
        m_layout = std::move(layout).value();
    }

    void TearDown() override
    {
        if (m_server)
            m_server->run({ "setxkbmap", "us" });
    }

    // Switches the server's layout and waits until the keymap has heard of it.
    void switchLayout(const std::vector<std::string>& arguments)
    {
        auto seen = m_layout->keymap().changes();
        ASSERT_TRUE(m_server->run(arguments));
        ASSERT_TRUE(m_layout->keymap().awaitChange(seen, deadline)) << "no keymap change within 5 s";
    }

    static InputEvent keyDown(std::uint32_t keysym, std::uint64_t flags = 0)
    {
        return { EventType::keyDown, *X11KeyTable::keyCode(keysym), flags, {}, 0, 0, 0, false };
    }

    testing::XServer* m_server = nullptr;
    std::unique_ptr<X11KeyboardLayout> m_layout;
};

TEST_F(X11KeyboardLayoutTest, LabelsKeysAsTheCurrentLayoutShowsThem)
{
    auto yKey = m_server->keycode(XKB_KEY_y);
    auto bracketKey = m_server->keycode(XKB_KEY_bracketleft);
    auto spaceKey = m_server->keycode(XKB_KEY_space);
    EXPECT_EQ(m_layout->keymap().label(yKey), "Y");
    EXPECT_EQ(m_layout->keymap().label(bracketKey), "[");

    switchLayout({ "setxkbmap", "de" });
    EXPECT_EQ(m_layout->keymap().label(yKey), "Z");
    EXPECT_EQ(m_layout->keymap().label(bracketKey), "Ü");
    EXPECT_EQ(m_layout->keymap().label(spaceKey), "Space");
}

TEST_F(X11KeyboardLayoutTest, TypesWhatTheLayoutTypesWithTheEventsModifiers)
{
    struct Row {
        const char* name;
        InputEvent event;
        const char* characters;
    };
    const Row rows[] = {
        { "a letter", keyDown(XKB_KEY_a), "a" },
        { "with shift", keyDown(XKB_KEY_a, EventFlags::shift), "A" },
        { "with caps lock", keyDown(XKB_KEY_a, EventFlags::capsLock), "A" },
        { "a shifted digit", keyDown(XKB_KEY_2, EventFlags::shift), "@" },
        { "a key that types nothing", keyDown(XKB_KEY_Left), "" },
    };
    for (const auto& row : rows)
        EXPECT_EQ(m_layout->characters(row.event), row.characters) << row.name;

    switchLayout({ "setxkbmap", "de" });
    EXPECT_EQ(m_layout->characters(keyDown(XKB_KEY_2, EventFlags::shift)), "\"");
}

TEST_F(X11KeyboardLayoutTest, DeadKeysTypeTheComposedCharacter)
{
    switchLayout({ "setxkbmap", "us", "-variant", "intl" });
    EXPECT_EQ(m_layout->characters(keyDown(XKB_KEY_apostrophe)), "");
    EXPECT_EQ(m_layout->characters(keyDown(XKB_KEY_e)), "é");
    EXPECT_EQ(m_layout->characters(keyDown(XKB_KEY_e)), "e");
}

} // namespace
} // namespace quillmar
