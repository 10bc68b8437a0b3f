#pragma once

#include <xkbcommon/xkbcommon.h>

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>

#include "core/base/Result.h"
#include "platform/linux/X11Connection.h"
#include "platform/linux/X11KeyTable.h"

namespace quillmar {

// The server's keyboard as xkbcommon reads it: keycodes and keysyms of the current layout, the modifiers
// the lock keys set, and the keyboard state, kept current from XKB events. The keymap itself is read again
// on first use after the server announced a new one. Thread-safe.
class X11Keymap final {
public:
    using Keycode = std::uint8_t;

    // Sets up XKB on `connection` and reads the keymap, state and modifier mapping.
    static Result<std::unique_ptr<X11Keymap>> create(std::shared_ptr<X11Connection> connection);
    ~X11Keymap();
    X11Keymap(const X11Keymap&) = delete;
    X11Keymap& operator=(const X11Keymap&) = delete;

    // The key that types `keysym` in the current layout, at the lowest shift level; none when no key does.
    std::optional<Keycode> keycode(X11KeyTable::Keysym keysym);

    // The keysym a key types without modifiers in the current layout (0 for none).
    X11KeyTable::Keysym keysym(Keycode keycode);

    // The X state bits of the NumLock and ScrollLock keys (0 when the keyboard has none).
    std::uint16_t numLockMask();
    std::uint16_t scrollLockMask();

    // The modifiers in effect now (X core state bits, locks included) and the current layout group.
    struct Snapshot {
        std::uint16_t modifiers = 0;
        std::uint32_t group = 0;
    };
    Snapshot snapshot();

    // What `keycode` types with `modifiers` (X state bits) in `group`: its keysym (0 for none) and its
    // characters (UTF-8, empty for none; Control makes control characters).
    struct Typed {
        X11KeyTable::Keysym keysym = 0;
        std::string text;
    };
    Typed type(Keycode keycode, std::uint16_t modifiers, std::uint32_t group);

    // What the key is labelled in the current layout: a named key ("Space", "F5") by its virtual code,
    // else its unshifted characters upper-cased ("Ü" on a German keyboard); empty when it has none.
    std::string label(Keycode keycode);

    // How many times the keymap or layout group changed; waits up to `timeout` for a count above `seen`.
    std::uint64_t changes();
    bool awaitChange(std::uint64_t seen, Duration timeout);

private:
    X11Keymap(std::shared_ptr<X11Connection> connection, std::int32_t device, std::uint8_t firstEvent);
    Result<void> refresh(std::unique_lock<std::mutex>& lock);
    void refreshIfStale(std::unique_lock<std::mutex>& lock);
    void handle(const xcb_generic_event_t& event);
    void indexGroup(std::uint32_t group);
    std::uint32_t currentGroup() const;

    std::shared_ptr<X11Connection> m_connection;
    std::int32_t m_device;
    std::uint8_t m_firstEvent;
    std::unique_ptr<xkb_context, void (*)(xkb_context*)> m_context;
    std::unique_ptr<xkb_keymap, void (*)(xkb_keymap*)> m_keymap;
    std::unique_ptr<xkb_state, void (*)(xkb_state*)> m_state; // the server's, kept current
    std::unique_ptr<xkb_state, void (*)(xkb_state*)> m_scratch; // for asking "what would this type"
    std::uint16_t m_numLock = 0;
    std::uint16_t m_scrollLock = 0;
    std::unordered_map<X11KeyTable::Keysym, Keycode> m_keycodes; // of m_indexedGroup
    std::optional<std::uint32_t> m_indexedGroup;
    bool m_stale = false;
    std::uint64_t m_changes = 0;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    X11Connection::ListenerID m_listener = 0;
};

} // namespace quillmar
