#include "platform/linux/X11KeyListener.h"

#include <xcb/xinput.h>

#include "platform/linux/X11KeyTable.h"

namespace quillmar {

namespace {

Error listenError(std::string_view detail)
{
    return Error { "x11.input", "The X server doesn't report key presses to listeners.", std::string(detail) };
}

} // namespace

X11KeyListener::X11KeyListener(std::shared_ptr<X11Connection> connection, std::unique_ptr<X11Keymap> keymap,
    MainQueue& mainQueue, Handler handler, std::uint8_t opcode)
    : m_connection(std::move(connection))
    , m_keymap(std::move(keymap))
    , m_mainQueue(mainQueue)
    , m_handler(std::move(handler))
    , m_opcode(opcode)
    , m_self(std::make_shared<X11KeyListener*>(this))
{
}

X11KeyListener::~X11KeyListener()
{
    m_connection->removeListener(m_listener);
}

Result<std::unique_ptr<X11KeyListener>> X11KeyListener::create(std::shared_ptr<X11Connection> connection,
    MainQueue& mainQueue, Handler handler)
{
    auto* raw = connection->raw();
    const auto* extension = xcb_get_extension_data(raw, &xcb_input_id);
    if (!extension || !extension->present)
        return listenError("x11: no XInputExtension");
    // Raw events on the root window need XInput 2.1.
    auto version = xcb_input_xi_query_version(raw, 2, 2);
    QUILLMAR_TRY_ASSIGN(auto answer, connection->answer(version.sequence));
    auto* reply = static_cast<xcb_input_xi_query_version_reply_t*>(answer.reply.get());
    if (!reply || (reply->major_version < 2 || (reply->major_version == 2 && reply->minor_version < 1)))
        return listenError("x11: XInput older than 2.1");
    QUILLMAR_TRY_ASSIGN(auto keymap, X11Keymap::create(connection));

    std::unique_ptr<X11KeyListener> listener(new X11KeyListener(std::move(connection), std::move(keymap), mainQueue,
        std::move(handler), extension->major_opcode));
    auto* self = listener.get();
    listener->m_listener = listener->m_connection->addListener([self](const xcb_generic_event_t& event) { self->handle(event); });
    // The master keyboard only: its slaves would report each press a second time.
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t bits;
    } mask { { XCB_INPUT_DEVICE_ALL_MASTER, 1 }, XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS };
    auto selected = xcb_input_xi_select_events_checked(raw, listener->m_connection->root(), 1, &mask.head);
    QUILLMAR_TRY(listener->m_connection->roundTrip());
    if (XcbPointer<xcb_generic_error_t> error { xcb_request_check(raw, selected) })
        return listenError("x11: selecting raw key events failed");
    return listener;
}

void X11KeyListener::handle(const xcb_generic_event_t& event)
{
    if ((event.response_type & 0x7F) != XCB_GE_GENERIC)
        return;
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if (generic.extension != m_opcode || generic.event_type != XCB_INPUT_RAW_KEY_PRESS)
        return;
    const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
    if (raw.flags & XCB_INPUT_KEY_EVENT_FLAGS_KEY_REPEAT)
        return;
    // Raw events carry no modifiers: the keyboard state, kept from XKB events that came before on the
    // same connection, is the state this press happened in.
    auto state = m_keymap->snapshot();
    X11KeyPress press { static_cast<X11Keymap::Keycode>(raw.detail), state.modifiers, state.group };
    m_mainQueue.post([weak = std::weak_ptr<X11KeyListener*>(m_self), press] {
        if (auto self = weak.lock())
            (*self)->m_handler(describe(*(*self)->m_keymap, press));
    });
}

KeyReport X11KeyListener::describe(X11Keymap& keymap, const X11KeyPress& press)
{
    KeyReport report;
    auto typed = keymap.type(press.keycode, press.modifiers, press.group);
    report.keyCode = X11KeyTable::keyCode(keymap.keysym(press.keycode));
    report.modifiers = X11KeyTable::carbonModifiers(press.modifiers);
    report.label = keymap.label(press.keycode);
    report.characters = std::move(typed.text);
    report.isModifierKey = report.keyCode && X11KeyTable::isModifierKey(*report.keyCode);
    return report;
}

} // namespace quillmar
