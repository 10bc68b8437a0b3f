#include <gtest/gtest.h>

#include <xkbcommon/xkbcommon-keysyms.h>

#include <condition_variable>
#include <deque>
#include <mutex>

#include "core/hotkeys/Shortcut.h"
#include "platform/linux/X11HotKeyRegistrar.h"
#include "platform/linux/X11KeyTable.h"
#include "tests/platform/linux/support/XServer.h"

namespace quillmar {
namespace {

using testing::XServer;
constexpr auto deadline = std::chrono::seconds(5);
constexpr std::uint32_t controlOption = Shortcut::controlMask | Shortcut::optionMask;

class X11HotKeyRegistrarTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_server = testing::sharedXServer();
        ASSERT_NE(m_server, nullptr);
        auto connection = X11Connection::open(m_server->display());
        ASSERT_TRUE(connection) << connection.error().context;
        auto registrar = X11HotKeyRegistrar::create(std::move(connection).value());
        ASSERT_TRUE(registrar) << registrar.error().context;
        m_registrar = std::move(registrar).value();
        m_registrar->setPressedHandler([this](HotKeyID id) {
            std::lock_guard lock(m_mutex);
            m_presses.push_back(id.number);
            m_pressed.notify_all();
        });
        // F12 marks the end of what a test pressed: once it arrives, every earlier press has too.
        ASSERT_TRUE(m_registrar->registerHotKey(*X11KeyTable::keyCode(XKB_KEY_F12), 0, { 0, markerNumber }));
    }

    // The numbers reported until the marker key, pressed last.
    std::vector<std::uint32_t> pressesUntilMarker()
    {
        m_server->tap({ XKB_KEY_F12 });
        std::unique_lock lock(m_mutex);
        bool marked = m_pressed.wait_for(lock, deadline, [this] {
            return !m_presses.empty() && m_presses.back() == markerNumber;
        });
        EXPECT_TRUE(marked) << "the marker key was not reported within 5 s";
        std::vector<std::uint32_t> presses(m_presses.begin(), m_presses.end());
        if (marked)
            presses.pop_back();
        m_presses.clear();
        return presses;
    }

    static constexpr std::uint32_t markerNumber = 99;
    XServer* m_server = nullptr;
    std::unique_ptr<X11HotKeyRegistrar> m_registrar;
    std::mutex m_mutex;
    std::condition_variable m_pressed;
    std::deque<std::uint32_t> m_presses;
};

TEST_F(X11HotKeyRegistrarTest, FiresOncePerPressWithTheLockKeysOnAndOff)
{
    ASSERT_TRUE(m_registrar->registerHotKey(*X11KeyTable::keyCode(XKB_KEY_space), controlOption, { 0, 1 }));
    ASSERT_TRUE(m_registrar->registerHotKey(*X11KeyTable::keyCode(XKB_KEY_v), controlOption | Shortcut::shiftMask, { 0, 2 }));
    std::vector<std::uint32_t> chord { XKB_KEY_Control_L, XKB_KEY_Alt_L, XKB_KEY_space };
    std::vector<std::uint32_t> shiftedChord { XKB_KEY_Control_L, XKB_KEY_Alt_L, XKB_KEY_Shift_L, XKB_KEY_v };

    struct Step {
        const char* locks;
        std::uint32_t toggle; // the lock key pressed before the step
    };
    const Step steps[] = { { "none", 0 }, { "NumLock", XKB_KEY_Num_Lock }, { "NumLock and CapsLock", XKB_KEY_Caps_Lock } };
    for (auto [locks, toggle] : steps) {
        if (toggle != 0)
            m_server->tap({ toggle });
        m_server->tap(chord);
        m_server->tap(shiftedChord);
        m_server->tap(chord);
        // Without its modifiers the key is nobody's hot key.
        m_server->tap({ XKB_KEY_space });
        EXPECT_EQ(pressesUntilMarker(), (std::vector<std::uint32_t> { 1, 2, 1 })) << "locks: " << locks;
    }
    m_server->tap({ XKB_KEY_Num_Lock });
    m_server->tap({ XKB_KEY_Caps_Lock });
}

TEST_F(X11HotKeyRegistrarTest, SkipsACombinationAnotherClientHoldsAndKeepsTheOthers)
{
    auto other = X11Connection::open(m_server->display());
    ASSERT_TRUE(other);
    auto vKey = m_server->keycode(XKB_KEY_v);
    xcb_grab_key((*other)->raw(), 0, (*other)->root(), XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1, vKey,
        XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    ASSERT_TRUE((*other)->roundTrip());

    EXPECT_FALSE(m_registrar->registerHotKey(*X11KeyTable::keyCode(XKB_KEY_v), controlOption, { 0, 1 }));
    EXPECT_EQ(m_registrar->lastRefusal(), "Another application already uses that shortcut.");
    ASSERT_TRUE(m_registrar->registerHotKey(*X11KeyTable::keyCode(XKB_KEY_Left), controlOption, { 0, 2 }));
    m_server->tap({ XKB_KEY_Control_L, XKB_KEY_Alt_L, XKB_KEY_v });
    m_server->tap({ XKB_KEY_Control_L, XKB_KEY_Alt_L, XKB_KEY_Left });
    EXPECT_EQ(pressesUntilMarker(), (std::vector<std::uint32_t> { 2 }));
}

TEST_F(X11HotKeyRegistrarTest, UnregisteringStopsDeliveryAndFreesTheCombination)
{
    auto ref = m_registrar->registerHotKey(*X11KeyTable::keyCode(XKB_KEY_F5), Shortcut::commandMask, { 0, 1 });
    ASSERT_TRUE(ref);
    m_server->tap({ XKB_KEY_Super_L, XKB_KEY_F5 });
    EXPECT_EQ(pressesUntilMarker(), (std::vector<std::uint32_t> { 1 }));

    m_registrar->unregisterHotKey(*ref);
    m_server->tap({ XKB_KEY_Super_L, XKB_KEY_F5 });
    EXPECT_EQ(pressesUntilMarker(), (std::vector<std::uint32_t> {}));
    // Grabbed again under a new number: nothing of the old grab is left to clash with.
    EXPECT_TRUE(m_registrar->registerHotKey(*X11KeyTable::keyCode(XKB_KEY_F5), Shortcut::commandMask, { 0, 3 }));
}

TEST_F(X11HotKeyRegistrarTest, RefusesAKeyOutsideTheVocabulary)
{
    EXPECT_FALSE(m_registrar->registerHotKey(0x0A, controlOption, { 0, 1 }));
    EXPECT_EQ(m_registrar->lastRefusal(), "That key can't be used for a global shortcut here.");
}

} // namespace
} // namespace quillmar
