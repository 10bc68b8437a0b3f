#include "platform/linux/X11Keymap.h"

// xcb's XKB header names a member `explicit`, a C++ keyword.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <fmt/format.h>

#include "core/base/Diagnostics.h"
#include "core/hotkeys/Shortcut.h"

namespace quillmar {

namespace {

Error keyboardError(std::string_view detail)
{
    return Error { "x11.keyboard", "The X server's keyboard can't be read.", std::string(detail) };
}

// The events that change what keys type: a new keyboard or keymap, and the modifier and group state.
void selectEvents(xcb_connection_t* connection, std::int32_t device)
{
    constexpr std::uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY
        | XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    constexpr std::uint16_t mapParts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS
        | XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_EXPLICIT_COMPONENTS | XCB_XKB_MAP_PART_KEY_ACTIONS
        | XCB_XKB_MAP_PART_VIRTUAL_MODS | XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;
    constexpr std::uint16_t stateParts = XCB_XKB_STATE_PART_MODIFIER_BASE | XCB_XKB_STATE_PART_MODIFIER_LATCH
        | XCB_XKB_STATE_PART_MODIFIER_LOCK | XCB_XKB_STATE_PART_GROUP_BASE | XCB_XKB_STATE_PART_GROUP_LATCH
        | XCB_XKB_STATE_PART_GROUP_LOCK;
    xcb_xkb_select_events_details_t details {};
    details.affectNewKeyboard = XCB_XKB_NKN_DETAIL_KEYCODES;
    details.newKeyboardDetails = XCB_XKB_NKN_DETAIL_KEYCODES;
    details.affectState = stateParts;
    details.stateDetails = stateParts;
    xcb_xkb_select_events_aux(connection, static_cast<xcb_xkb_device_spec_t>(device), events, 0, 0, mapParts,
        mapParts, &details);
}

} // namespace

X11Keymap::X11Keymap(std::shared_ptr<X11Connection> connection, std::int32_t device, std::uint8_t firstEvent)
    : m_connection(std::move(connection))
    , m_device(device)
    , m_firstEvent(firstEvent)
    , m_context(xkb_context_new(XKB_CONTEXT_NO_FLAGS), xkb_context_unref)
    , m_keymap(nullptr, xkb_keymap_unref)
    , m_state(nullptr, xkb_state_unref)
    , m_scratch(nullptr, xkb_state_unref)
{
}

X11Keymap::~X11Keymap()
{
    if (m_listener != 0)
        m_connection->removeListener(m_listener);
}

Result<std::unique_ptr<X11Keymap>> X11Keymap::create(std::shared_ptr<X11Connection> connection)
{
    std::uint8_t firstEvent = 0;
    if (!xkb_x11_setup_xkb_extension(connection->raw(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
            XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &firstEvent, nullptr))
        return keyboardError("x11: the server has no usable XKB");
    auto device = xkb_x11_get_core_keyboard_device_id(connection->raw());
    if (device < 0)
        return keyboardError("x11: no core keyboard device");
    std::unique_ptr<X11Keymap> keymap(new X11Keymap(std::move(connection), device, firstEvent));
    if (!keymap->m_context)
        return keyboardError("x11: no xkb context");
    selectEvents(keymap->m_connection->raw(), device);
    // A held key repeats as presses without releases in between, so listeners can tell repeats apart.
    xcb_xkb_per_client_flags(keymap->m_connection->raw(), XCB_XKB_ID_USE_CORE_KBD,
        XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT, XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT, 0, 0, 0);
    {
        std::unique_lock lock(keymap->m_mutex);
        QUILLMAR_TRY(keymap->refresh(lock));
    }
    auto* self = keymap.get();
    keymap->m_listener = keymap->m_connection->addListener([self](const xcb_generic_event_t& event) { self->handle(event); });
    return keymap;
}

Result<void> X11Keymap::refresh(std::unique_lock<std::mutex>&)
{
    auto* connection = m_connection->raw();
    auto modifierCookie = xcb_get_modifier_mapping(connection);
    std::unique_ptr<xkb_keymap, void (*)(xkb_keymap*)> keymap(
        xkb_x11_keymap_new_from_device(m_context.get(), connection, m_device, XKB_KEYMAP_COMPILE_NO_FLAGS),
        xkb_keymap_unref);
    if (!keymap)
        return keyboardError("x11: reading the keymap failed");
    std::unique_ptr<xkb_state, void (*)(xkb_state*)> state(
        xkb_x11_state_new_from_device(keymap.get(), connection, m_device), xkb_state_unref);
    std::unique_ptr<xkb_state, void (*)(xkb_state*)> scratch(xkb_state_new(keymap.get()), xkb_state_unref);
    if (!state || !scratch)
        return keyboardError("x11: reading the keyboard state failed");

    // The lock keys' modifiers, from the core modifier mapping: eight rows of keycodes, one per state bit.
    QUILLMAR_TRY_ASSIGN(auto answer, m_connection->answer(modifierCookie.sequence));
    auto* mapping = static_cast<xcb_get_modifier_mapping_reply_t*>(answer.reply.get());
    m_numLock = 0;
    m_scrollLock = 0;
    if (mapping) {
        const auto* keycodes = xcb_get_modifier_mapping_keycodes(mapping);
        int perModifier = mapping->keycodes_per_modifier;
        for (int modifier = 0; modifier < 8; ++modifier) {
            for (int slot = 0; slot < perModifier; ++slot) {
                const xkb_keysym_t* syms = nullptr;
                auto count = xkb_keymap_key_get_syms_by_level(keymap.get(), keycodes[modifier * perModifier + slot], 0, 0, &syms);
                for (int symbol = 0; symbol < count; ++symbol) {
                    auto bit = static_cast<std::uint16_t>(1u << modifier);
                    if (syms[symbol] == XKB_KEY_Num_Lock)
                        m_numLock = bit;
                    else if (syms[symbol] == XKB_KEY_Scroll_Lock)
                        m_scrollLock = bit;
                }
            }
        }
    }
    m_keymap = std::move(keymap);
    m_state = std::move(state);
    m_scratch = std::move(scratch);
    m_indexedGroup.reset();
    m_stale = false;
    return {};
}

void X11Keymap::refreshIfStale(std::unique_lock<std::mutex>& lock)
{
    if (!m_stale)
        return;
    if (auto refreshed = refresh(lock); !refreshed)
        diagnostic("x11: keymap not refreshed: {}", refreshed.error().context);
    ++m_changes;
    m_changed.notify_all();
}

void X11Keymap::handle(const xcb_generic_event_t& event)
{
    if (event.response_type != m_firstEvent)
        return;
    // Byte 1 of every XKB event is its XKB type.
    std::lock_guard lock(m_mutex);
    switch (event.pad0) {
    case XCB_XKB_NEW_KEYBOARD_NOTIFY:
    case XCB_XKB_MAP_NOTIFY:
        // Read again on first use rather than here: reading blocks on the server, and this thread
        // hands out every event of the connection.
        m_stale = true;
        ++m_changes;
        break;
    case XCB_XKB_STATE_NOTIFY: {
        const auto& notify = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
        auto before = currentGroup();
        xkb_state_update_mask(m_state.get(), notify.baseMods, notify.latchedMods, notify.lockedMods,
            static_cast<xkb_layout_index_t>(notify.baseGroup), static_cast<xkb_layout_index_t>(notify.latchedGroup),
            notify.lockedGroup);
        if (currentGroup() != before)
            ++m_changes;
        break;
    }
    default:
        return;
    }
    m_changed.notify_all();
}

std::uint32_t X11Keymap::currentGroup() const
{
    return xkb_state_serialize_layout(m_state.get(), XKB_STATE_LAYOUT_EFFECTIVE);
}

void X11Keymap::indexGroup(std::uint32_t group)
{
    if (m_indexedGroup == group)
        return;
    m_keycodes.clear();
    // Lowest level first, then lowest keycode: the key that types the symbol with the fewest modifiers.
    for (xkb_level_index_t level = 0; level < 4; ++level) {
        for (auto key = xkb_keymap_min_keycode(m_keymap.get()); key <= xkb_keymap_max_keycode(m_keymap.get()) && key < 256; ++key) {
            const xkb_keysym_t* syms = nullptr;
            auto count = xkb_keymap_key_get_syms_by_level(m_keymap.get(), key, group, level, &syms);
            for (int symbol = 0; symbol < count; ++symbol)
                m_keycodes.try_emplace(syms[symbol], static_cast<Keycode>(key));
        }
    }
    m_indexedGroup = group;
}

std::optional<X11Keymap::Keycode> X11Keymap::keycode(X11KeyTable::Keysym keysym)
{
    std::unique_lock lock(m_mutex);
    refreshIfStale(lock);
    indexGroup(currentGroup());
    if (auto found = m_keycodes.find(keysym); found != m_keycodes.end())
        return found->second;
    return std::nullopt;
}

X11KeyTable::Keysym X11Keymap::keysym(Keycode keycode)
{
    std::unique_lock lock(m_mutex);
    refreshIfStale(lock);
    const xkb_keysym_t* syms = nullptr;
    if (xkb_keymap_key_get_syms_by_level(m_keymap.get(), keycode, currentGroup(), 0, &syms) < 1)
        return 0;
    return syms[0];
}

std::uint16_t X11Keymap::numLockMask()
{
    std::unique_lock lock(m_mutex);
    refreshIfStale(lock);
    return m_numLock;
}

std::uint16_t X11Keymap::scrollLockMask()
{
    std::unique_lock lock(m_mutex);
    refreshIfStale(lock);
    return m_scrollLock;
}

X11Keymap::Snapshot X11Keymap::snapshot()
{
    std::lock_guard lock(m_mutex);
    // xkbcommon numbers the eight real modifiers of an X keymap first, in X's bit order.
    auto modifiers = xkb_state_serialize_mods(m_state.get(), XKB_STATE_MODS_EFFECTIVE) & 0xFF;
    return { static_cast<std::uint16_t>(modifiers), currentGroup() };
}

X11Keymap::Typed X11Keymap::type(Keycode keycode, std::uint16_t modifiers, std::uint32_t group)
{
    std::unique_lock lock(m_mutex);
    refreshIfStale(lock);
    // Lock and NumLock are locked modifiers to XKB; the others are held.
    auto locked = static_cast<xkb_mod_mask_t>(modifiers & (X11KeyTable::X11Modifier::lock | m_numLock));
    xkb_state_update_mask(m_scratch.get(), modifiers & ~locked, 0, locked, 0, 0, group);
    Typed typed;
    typed.keysym = xkb_state_key_get_one_sym(m_scratch.get(), keycode);
    char buffer[64];
    auto size = xkb_state_key_get_utf8(m_scratch.get(), keycode, buffer, sizeof buffer);
    if (size > 0 && static_cast<std::size_t>(size) < sizeof buffer)
        typed.text.assign(buffer, static_cast<std::size_t>(size));
    return typed;
}

std::string X11Keymap::label(Keycode keycode)
{
    auto symbol = keysym(keycode);
    auto code = X11KeyTable::keyCode(symbol);
    char buffer[64];
    auto size = xkb_keysym_to_utf8(symbol, buffer, sizeof buffer);
    std::string characters = size > 1 ? std::string(buffer, static_cast<std::size_t>(size - 1)) : std::string();
    // A key outside the vocabulary gets a code no named key has, so only its characters label it.
    return Shortcut::label(code.value_or(0xFFFF), characters);
}

std::uint64_t X11Keymap::changes()
{
    std::lock_guard lock(m_mutex);
    return m_changes;
}

bool X11Keymap::awaitChange(std::uint64_t seen, Duration timeout)
{
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, timeout, [&] { return m_changes > seen; });
}

} // namespace quillmar
