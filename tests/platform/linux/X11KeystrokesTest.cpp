#include <gtest/gtest.h>

#include <xcb/xtest.h>

#include <condition_variable>
#include <mutex>
#include <vector>

#include "platform/linux/X11KeyTable.h"
#include "platform/linux/X11Keystrokes.h"
#include "tests/platform/linux/support/XServer.h"

namespace quillmar {
namespace {

constexpr auto deadline = std::chrono::seconds(5);
constexpr std::uint32_t altKeysym = 0xffe9; // Alt_L
constexpr std::uint32_t controlKeysym = 0xffe3; // Control_L
constexpr std::uint32_t vKeysym = 0x76;

struct KeyEvent {
    std::uint8_t type = 0;
    xcb_keycode_t key = 0;
    std::uint16_t state = 0;
    bool operator==(const KeyEvent&) const = default;
};

// A focused window of the test's own that records the keys it receives.
class KeyWindow final {
public:
    explicit KeyWindow(X11Connection& connection)
        : m_connection(connection)
    {
        auto* raw = connection.raw();
        m_window = xcb_generate_id(raw);
        std::uint32_t mask = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;
        xcb_create_window(raw, XCB_COPY_FROM_PARENT, m_window, connection.root(), 0, 0, 100, 100, 0,
            XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
        xcb_map_window(raw, m_window);
        m_listener = connection.addListener([this](const xcb_generic_event_t& event) {
            auto type = static_cast<std::uint8_t>(event.response_type & 0x7F);
            if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE)
                return;
            const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
            std::lock_guard lock(m_mutex);
            m_events.push_back({ type, key.detail, key.state });
            m_arrived.notify_all();
        });
        EXPECT_TRUE(connection.roundTrip());
        xcb_set_input_focus(raw, XCB_INPUT_FOCUS_POINTER_ROOT, m_window, XCB_CURRENT_TIME);
        EXPECT_TRUE(connection.roundTrip());
    }
    ~KeyWindow()
    {
        m_connection.removeListener(m_listener);
        xcb_destroy_window(m_connection.raw(), m_window);
        xcb_flush(m_connection.raw());
    }

    // The events received once `count` have come; what came by the deadline otherwise.
    std::vector<KeyEvent> take(std::size_t count)
    {
        std::unique_lock lock(m_mutex);
        m_arrived.wait_for(lock, deadline, [&] { return m_events.size() >= count; });
        return std::exchange(m_events, {});
    }

private:
    X11Connection& m_connection;
    xcb_window_t m_window = 0;
    X11Connection::ListenerID m_listener = 0;
    std::mutex m_mutex;
    std::condition_variable m_arrived;
    std::vector<KeyEvent> m_events;
};

bool isDown(X11Connection& connection, xcb_keycode_t key)
{
    auto answer = connection.answer(xcb_query_keymap(connection.raw()).sequence);
    if (!answer || !answer.value().reply)
        return false;
    const auto* keymap = static_cast<xcb_query_keymap_reply_t*>(answer.value().reply.get());
    return (keymap->keys[key / 8] >> (key % 8)) & 1;
}

TEST(X11KeystrokesTest, PastesWithControlVAloneWhileTheUserHoldsAnotherModifier)
{
    auto* server = testing::sharedXServer();
    ASSERT_NE(server, nullptr);
    auto connection = X11Connection::open(server->display());
    ASSERT_TRUE(connection) << connection.error().message;
    auto keystrokes = X11Keystrokes::create(std::move(connection).value());
    ASSERT_TRUE(keystrokes) << keystrokes.error().message;
    KeyWindow window(server->connection());
    const auto altKey = server->keycode(altKeysym);
    const auto controlKey = server->keycode(controlKeysym);
    const auto vKey = server->keycode(vKeysym);

    // The user holds Alt, as after pressing Ctrl+Alt+V and letting go of Ctrl.
    xcb_test_fake_input(server->connection().raw(), XCB_KEY_PRESS, altKey, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    ASSERT_TRUE(server->connection().roundTrip());
    ASSERT_EQ(window.take(1).size(), 1u);

    EXPECT_TRUE(keystrokes.value()->postPaste());
    // Each event's state is the modifiers before it.
    constexpr auto control = X11KeyTable::X11Modifier::control;
    const std::vector<KeyEvent> expected {
        { XCB_KEY_RELEASE, altKey, X11KeyTable::X11Modifier::mod1 },
        { XCB_KEY_PRESS, controlKey, 0 },
        { XCB_KEY_PRESS, vKey, control },
        { XCB_KEY_RELEASE, vKey, control },
        { XCB_KEY_RELEASE, controlKey, control },
        { XCB_KEY_PRESS, altKey, 0 },
    };
    EXPECT_EQ(window.take(expected.size()), expected);
    EXPECT_TRUE(isDown(server->connection(), altKey));

    xcb_test_fake_input(server->connection().raw(), XCB_KEY_RELEASE, altKey, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    EXPECT_TRUE(server->connection().roundTrip());
    EXPECT_FALSE(isDown(server->connection(), altKey));
    EXPECT_EQ(window.take(1).size(), 1u);
}

TEST(X11KeystrokesTest, RefusesAKeyOutsideTheVocabulary)
{
    auto* server = testing::sharedXServer();
    ASSERT_NE(server, nullptr);
    auto connection = X11Connection::open(server->display());
    ASSERT_TRUE(connection) << connection.error().message;
    auto keystrokes = X11Keystrokes::create(std::move(connection).value());
    ASSERT_TRUE(keystrokes) << keystrokes.error().message;
    EXPECT_FALSE(keystrokes.value()->postKey(0xFFFF, 0));
}

} // namespace
} // namespace quillmar
