#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "core/base/Result.h"
#include "core/runtime/MainQueue.h"
#include "platform/linux/X11Connection.h"
#include "platform/linux/X11Keymap.h"

namespace quillmar {

// One key press as the reading thread saw it: the key, and the keyboard's modifiers and group at that moment.
struct X11KeyPress {
    X11Keymap::Keycode keycode = 0;
    std::uint16_t modifiers = 0; // X state bits
    std::uint32_t group = 0;
};

// A key press as the core sees it.
struct KeyReport {
    std::optional<std::uint32_t> keyCode; // the virtual key code; none for a key outside the vocabulary
    std::uint32_t modifiers = 0; // Carbon mask
    std::string label; // what the key is labelled in the current layout
    std::string characters; // what it types with its modifiers (UTF-8)
    bool isModifierKey = false; // Shift, Control, ... themselves
};

// Watches every key press of the X server without taking it from anyone: XInput2 raw key events on the
// root window, which arrive even while another client has grabbed the keyboard. The reading thread only
// notes the key and the keyboard state; the report is made on the main queue.
class X11KeyListener final {
public:
    using Handler = std::function<void(const KeyReport& report)>;

    // `handler` runs on `mainQueue`; both must outlive the listener.
    static Result<std::unique_ptr<X11KeyListener>> create(std::shared_ptr<X11Connection> connection,
        MainQueue& mainQueue, Handler handler);
    ~X11KeyListener();
    X11KeyListener(const X11KeyListener&) = delete;
    X11KeyListener& operator=(const X11KeyListener&) = delete;

    // The report of one press: what the main thread does per event.
    static KeyReport describe(X11Keymap& keymap, const X11KeyPress& press);

private:
    X11KeyListener(std::shared_ptr<X11Connection> connection, std::unique_ptr<X11Keymap> keymap, MainQueue& mainQueue,
        Handler handler, std::uint8_t opcode);
    void handle(const xcb_generic_event_t& event);

    std::shared_ptr<X11Connection> m_connection;
    std::unique_ptr<X11Keymap> m_keymap;
    MainQueue& m_mainQueue;
    Handler m_handler;
    std::uint8_t m_opcode;
    X11Connection::ListenerID m_listener = 0;
    // Posted reports hold it weakly: a report still queued when the listener goes away is dropped.
    std::shared_ptr<X11KeyListener*> m_self;
};

} // namespace quillmar
