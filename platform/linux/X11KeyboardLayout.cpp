#include "platform/linux/X11KeyboardLayout.h"

#include <cstdlib>

#include "core/base/Diagnostics.h"
#include "platform/linux/X11KeyTable.h"

namespace quillmar {

namespace {

const char* composeLocale()
{
    for (const char* name : { "LC_ALL", "LC_CTYPE", "LANG" }) {
        const char* value = std::getenv(name);
        if (value != nullptr && *value != '\0')
            return value;
    }
    return "C";
}

} // namespace

X11KeyboardLayout::X11KeyboardLayout(std::unique_ptr<X11Keymap> keymap)
    : m_keymap(std::move(keymap))
    , m_context(xkb_context_new(XKB_CONTEXT_NO_FLAGS), xkb_context_unref)
    , m_composeTable(nullptr, xkb_compose_table_unref)
    , m_compose(nullptr, xkb_compose_state_unref)
{
    if (m_context)
        m_composeTable.reset(xkb_compose_table_new_from_locale(m_context.get(), composeLocale(), XKB_COMPOSE_COMPILE_NO_FLAGS));
    if (m_composeTable)
        m_compose.reset(xkb_compose_state_new(m_composeTable.get(), XKB_COMPOSE_STATE_NO_FLAGS));
    else
        diagnostic("x11: no compose table for locale {}; dead keys type nothing", composeLocale());
}

Result<std::unique_ptr<X11KeyboardLayout>> X11KeyboardLayout::create(std::shared_ptr<X11Connection> connection)
{
    QUILLMAR_TRY_ASSIGN(auto keymap, X11Keymap::create(std::move(connection)));
    return std::unique_ptr<X11KeyboardLayout>(new X11KeyboardLayout(std::move(keymap)));
}

std::string X11KeyboardLayout::characters(const InputEvent& event)
{
    auto symbol = X11KeyTable::keysym(event.keyCode);
    auto keycode = symbol ? m_keymap->keycode(*symbol) : std::nullopt;
    if (!keycode)
        return {};
    auto state = m_keymap->snapshot();
    // The event's own modifiers, and NumLock as the keyboard has it now (events do not carry it).
    auto modifiers = static_cast<std::uint16_t>(X11KeyTable::x11ModifiersFromFlags(event.flags)
        | (state.modifiers & m_keymap->numLockMask()));
    auto typed = m_keymap->type(*keycode, modifiers, state.group);
    if (!m_compose)
        return typed.text;
    if (xkb_compose_state_feed(m_compose.get(), typed.keysym) == XKB_COMPOSE_FEED_IGNORED)
        return typed.text;
    switch (xkb_compose_state_get_status(m_compose.get())) {
    case XKB_COMPOSE_NOTHING:
        return typed.text;
    case XKB_COMPOSE_COMPOSING:
        return {};
    case XKB_COMPOSE_COMPOSED: {
        char buffer[64];
        auto size = xkb_compose_state_get_utf8(m_compose.get(), buffer, sizeof buffer);
        xkb_compose_state_reset(m_compose.get());
        if (size <= 0 || static_cast<std::size_t>(size) >= sizeof buffer)
            return {};
        return std::string(buffer, static_cast<std::size_t>(size));
    }
    case XKB_COMPOSE_CANCELLED:
        xkb_compose_state_reset(m_compose.get());
        return {};
    }
    return typed.text;
}

} // namespace quillmar
