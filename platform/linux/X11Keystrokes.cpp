#include "platform/linux/X11Keystrokes.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <vector>

#include "core/base/Diagnostics.h"
#include "platform/linux/X11KeyTable.h"
#include "platform/linux/X11Session.h"

namespace quillmar {

namespace {

constexpr unsigned lockRow = 1;

bool isDown(const xcb_query_keymap_reply_t& keymap, xcb_keycode_t key)
{
    return (keymap.keys[key / 8] >> (key % 8)) & 1;
}

void fake(xcb_connection_t* raw, std::uint8_t type, xcb_keycode_t key)
{
    xcb_test_fake_input(raw, type, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
}

} // namespace

X11Keystrokes::X11Keystrokes(std::shared_ptr<X11Connection> connection, std::unique_ptr<X11Keymap> keymap)
    : m_connection(std::move(connection))
    , m_keymap(std::move(keymap))
{
}

Result<std::unique_ptr<X11Keystrokes>> X11Keystrokes::create()
{
    if (desktopSession() != DesktopSession::x11)
        return Error { "keystrokes.session", std::string(sessionRefusal), "" };
    QUILLMAR_TRY_ASSIGN(auto connection, X11Connection::shared("Typing into other applications"));
    return create(std::move(connection));
}

Result<std::unique_ptr<X11Keystrokes>> X11Keystrokes::create(std::shared_ptr<X11Connection> connection)
{
    const auto* xtest = xcb_get_extension_data(connection->raw(), &xcb_test_id);
    if (!xtest || !xtest->present)
        return Error { "keystrokes.xtest", "The X server doesn't let applications type.", "x11: no XTEST extension" };
    QUILLMAR_TRY_ASSIGN(auto keymap, X11Keymap::create(connection));
    return std::unique_ptr<X11Keystrokes>(new X11Keystrokes(std::move(connection), std::move(keymap)));
}

bool X11Keystrokes::postKey(std::uint32_t keyCode, std::uint64_t flags)
{
    auto keysym = X11KeyTable::keysym(keyCode);
    auto key = keysym ? m_keymap->keycode(*keysym) : std::nullopt;
    if (!key) {
        diagnostic("keystrokes: no key for code {:#x} in this layout", keyCode);
        return false;
    }
    auto* raw = m_connection->raw();
    auto mapping = m_connection->answer(xcb_get_modifier_mapping(raw).sequence);
    auto pressed = m_connection->answer(xcb_query_keymap(raw).sequence);
    if (!mapping || !mapping.value().reply || !pressed || !pressed.value().reply)
        return false;
    auto* modifiers = static_cast<xcb_get_modifier_mapping_reply_t*>(mapping.value().reply.get());
    const auto* keymap = static_cast<xcb_query_keymap_reply_t*>(pressed.value().reply.get());
    const xcb_keycode_t* rows = xcb_get_modifier_mapping_keycodes(modifiers);
    const unsigned perRow = modifiers->keycodes_per_modifier;

    // The modifier keys held now, lock keys aside (releasing them would not undo their lock), and one key
    // for each modifier asked for.
    const std::uint16_t locks = static_cast<std::uint16_t>((1u << lockRow) | m_keymap->numLockMask() | m_keymap->scrollLockMask());
    const std::uint16_t wanted = static_cast<std::uint16_t>(X11KeyTable::x11ModifiersFromFlags(flags) & ~locks);
    std::vector<xcb_keycode_t> held;
    std::vector<xcb_keycode_t> wantedKeys;
    for (unsigned row = 0; row < 8; ++row) {
        if (locks & (1u << row))
            continue;
        bool found = false;
        for (unsigned column = 0; column < perRow; ++column) {
            auto code = rows[row * perRow + column];
            if (code == 0)
                continue;
            if (isDown(*keymap, code) && std::find(held.begin(), held.end(), code) == held.end())
                held.push_back(code);
            if ((wanted & (1u << row)) && !found) {
                wantedKeys.push_back(code);
                found = true;
            }
        }
        if ((wanted & (1u << row)) && !found) {
            diagnostic("keystrokes: no key sets modifier bit {}", row);
            return false;
        }
    }

    for (auto code : held)
        fake(raw, XCB_KEY_RELEASE, code);
    for (auto code : wantedKeys)
        fake(raw, XCB_KEY_PRESS, code);
    fake(raw, XCB_KEY_PRESS, *key);
    fake(raw, XCB_KEY_RELEASE, *key);
    for (auto code = wantedKeys.rbegin(); code != wantedKeys.rend(); ++code)
        fake(raw, XCB_KEY_RELEASE, *code);
    for (auto code : held)
        fake(raw, XCB_KEY_PRESS, code);
    return static_cast<bool>(m_connection->roundTrip());
}

} // namespace quillmar
