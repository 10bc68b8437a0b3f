#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <vector>

#include "core/base/Result.h"
#include "core/hotkeys/HotKeyRegistrar.h"
#include "platform/linux/X11Connection.h"
#include "platform/linux/X11Keymap.h"

namespace quillmar {

// Global hot keys as passive key grabs on the root window. Each hot key is grabbed once per combination of
// the lock modifiers (CapsLock, NumLock, ScrollLock), so that a lit lock key does not hide it. Presses are
// reported on the connection's reading thread, once per press (the keyboard's repeats are left out).
class X11HotKeyRegistrar final : public HotKeyRegistrar {
public:
    // Over the process's shared connection; the error's message is the sentence a user reads (outside an
    // X11 session: "Global shortcuts need an X11 session for now.").
    static Result<std::unique_ptr<X11HotKeyRegistrar>> create();
    static Result<std::unique_ptr<X11HotKeyRegistrar>> create(std::shared_ptr<X11Connection> connection);
    ~X11HotKeyRegistrar() override;

    // None when the key has no X keysym, no key of the layout types it, the server does not answer in
    // time, or another client holds the combination (in any lock variant: then none of it stays grabbed).
    std::optional<HotKeyRef> registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, HotKeyID id) override;
    void unregisterHotKey(HotKeyRef ref) override;
    void setPressedHandler(std::function<void(HotKeyID)> handler) override;

    // Why the last refused registration was refused, as a sentence; empty when none was.
    std::string lastRefusal() const;

private:
    struct Grab {
        X11Keymap::Keycode keycode = 0;
        std::uint16_t modifiers = 0;
        HotKeyID id;
    };

    X11HotKeyRegistrar(std::shared_ptr<X11Connection> connection, std::unique_ptr<X11Keymap> keymap);
    std::vector<std::uint16_t> lockVariants(std::uint16_t modifiers) const;
    void ungrab(const Grab& grab);
    void handle(const xcb_generic_event_t& event);

    std::shared_ptr<X11Connection> m_connection;
    std::unique_ptr<X11Keymap> m_keymap;
    std::uint16_t m_lockMask = X11KeyTable::X11Modifier::lock; // CapsLock, NumLock and ScrollLock, as last read
    mutable std::mutex m_mutex; // guards what the reading thread reads
    std::map<HotKeyRef, Grab> m_grabs;
    std::set<X11Keymap::Keycode> m_held; // grabbed keys down now, so repeats are not reported
    std::function<void(HotKeyID)> m_handler;
    std::string m_lastRefusal;
    HotKeyRef m_nextRef = 1;
    X11Connection::ListenerID m_listener = 0;
};

} // namespace quillmar
