#include "platform/linux/X11HotKeyRegistrar.h"

#include <fmt/format.h>

#include "core/base/Diagnostics.h"
#include "platform/linux/X11KeyTable.h"

namespace quillmar {

namespace {

constexpr std::uint8_t badAccess = 10;

} // namespace

X11HotKeyRegistrar::X11HotKeyRegistrar(std::shared_ptr<X11Connection> connection, std::unique_ptr<X11Keymap> keymap)
    : m_connection(std::move(connection))
    , m_keymap(std::move(keymap))
{
}

X11HotKeyRegistrar::~X11HotKeyRegistrar()
{
    m_connection->removeListener(m_listener);
    std::lock_guard lock(m_mutex);
    for (const auto& [ref, grab] : m_grabs)
        ungrab(grab);
    xcb_flush(m_connection->raw());
}

Result<std::unique_ptr<X11HotKeyRegistrar>> X11HotKeyRegistrar::create()
{
    QUILLMAR_TRY_ASSIGN(auto connection, X11Connection::shared("Global shortcuts"));
    return create(std::move(connection));
}

Result<std::unique_ptr<X11HotKeyRegistrar>> X11HotKeyRegistrar::create(std::shared_ptr<X11Connection> connection)
{
    QUILLMAR_TRY_ASSIGN(auto keymap, X11Keymap::create(connection));
    std::unique_ptr<X11HotKeyRegistrar> registrar(new X11HotKeyRegistrar(std::move(connection), std::move(keymap)));
    auto* self = registrar.get();
    registrar->m_listener = registrar->m_connection->addListener([self](const xcb_generic_event_t& event) { self->handle(event); });
    return registrar;
}

std::vector<std::uint16_t> X11HotKeyRegistrar::lockVariants(std::uint16_t modifiers) const
{
    std::vector<std::uint16_t> locks { 0 };
    for (std::uint16_t lock : { X11KeyTable::X11Modifier::lock, m_keymap->numLockMask(), m_keymap->scrollLockMask() }) {
        if (lock == 0 || (modifiers & lock))
            continue;
        auto count = locks.size();
        for (std::size_t index = 0; index < count; ++index)
            locks.push_back(static_cast<std::uint16_t>(locks[index] | lock));
    }
    for (auto& variant : locks)
        variant = static_cast<std::uint16_t>(variant | modifiers);
    return locks;
}

std::optional<HotKeyRef> X11HotKeyRegistrar::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, HotKeyID id)
{
    auto refuse = [this](std::string sentence) -> std::optional<HotKeyRef> {
        std::lock_guard lock(m_mutex);
        m_lastRefusal = std::move(sentence);
        return std::nullopt;
    };
    auto keysym = X11KeyTable::keysym(keyCode);
    if (!keysym)
        return refuse("That key can't be used for a global shortcut here.");
    auto keycode = m_keymap->keycode(*keysym);
    if (!keycode)
        return refuse("No key of the current keyboard layout types that key.");

    auto* connection = m_connection->raw();
    auto base = X11KeyTable::x11Modifiers(modifiers);
    std::vector<std::pair<std::uint16_t, xcb_void_cookie_t>> requests;
    for (auto variant : lockVariants(base)) {
        // Async: the keyboard keeps going for everyone else while a grabbed key is down.
        requests.emplace_back(variant, xcb_grab_key_checked(connection, 0, m_connection->root(), variant, *keycode,
                                           XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    // One round trip for all variants; then every error is known and checking each costs nothing.
    if (auto sent = m_connection->roundTrip(); !sent)
        return refuse(sent.error().message);
    std::vector<Grab> granted;
    bool taken = false;
    for (auto [variant, cookie] : requests) {
        XcbPointer<xcb_generic_error_t> error(xcb_request_check(connection, cookie));
        if (!error)
            granted.push_back({ *keycode, variant, id });
        else if (error->error_code == badAccess)
            taken = true;
        else
            diagnostic("x11: grabbing key {} with state {:#x} failed with error {}", *keycode, variant, error->error_code);
    }
    if (taken || granted.size() != requests.size()) {
        for (const auto& grab : granted)
            ungrab(grab);
        xcb_flush(connection);
        return refuse(taken ? "Another application already uses that shortcut." : "The X server refused that shortcut.");
    }
    std::lock_guard lock(m_mutex);
    m_lockMask = static_cast<std::uint16_t>(
        X11KeyTable::X11Modifier::lock | m_keymap->numLockMask() | m_keymap->scrollLockMask());
    auto ref = m_nextRef++;
    m_grabs.emplace(ref, Grab { *keycode, base, id });
    return ref;
}

void X11HotKeyRegistrar::ungrab(const Grab& grab)
{
    for (auto variant : lockVariants(grab.modifiers))
        xcb_ungrab_key(m_connection->raw(), grab.keycode, m_connection->root(), variant);
}

void X11HotKeyRegistrar::unregisterHotKey(HotKeyRef ref)
{
    std::lock_guard lock(m_mutex);
    auto found = m_grabs.find(ref);
    if (found == m_grabs.end())
        return;
    ungrab(found->second);
    xcb_flush(m_connection->raw());
    m_grabs.erase(found);
}

void X11HotKeyRegistrar::setPressedHandler(std::function<void(HotKeyID)> handler)
{
    std::lock_guard lock(m_mutex);
    m_handler = std::move(handler);
}

std::string X11HotKeyRegistrar::lastRefusal() const
{
    std::lock_guard lock(m_mutex);
    return m_lastRefusal;
}

void X11HotKeyRegistrar::handle(const xcb_generic_event_t& event)
{
    auto type = event.response_type & 0x7F;
    if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE)
        return;
    const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
    std::lock_guard lock(m_mutex);
    if (type == XCB_KEY_RELEASE) {
        m_held.erase(key.detail);
        return;
    }
    // With detectable auto-repeat (set up with the keymap) the keyboard's repeats are further presses
    // without releases: only the first press of a hold counts.
    if (!m_held.insert(key.detail).second)
        return;
    auto modifiers = static_cast<std::uint16_t>(key.state & ~m_lockMask);
    for (const auto& [ref, grab] : m_grabs) {
        if (grab.keycode == key.detail && grab.modifiers == modifiers) {
            if (m_handler)
                m_handler(grab.id);
            return;
        }
    }
}

} // namespace quillmar
