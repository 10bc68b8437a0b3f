#pragma once

#include <memory>

#include "core/base/Result.h"
#include "core/desktop/Keystrokes.h"
#include "platform/linux/X11Connection.h"
#include "platform/linux/X11Keymap.h"

namespace quillmar {

// Synthetic key presses through XTest. The modifiers the user still holds are released first and pressed
// again after, so that a paste posted from the shortcut Ctrl+Alt+V reaches the application as Ctrl+V alone.
class X11Keystrokes final : public Keystrokes {
public:
    static constexpr std::string_view sessionRefusal = "Typing into other applications needs an X11 session for now.";

    // On the process's shared connection; refuses outside an X11 session or without XTest.
    static Result<std::unique_ptr<X11Keystrokes>> create();
    static Result<std::unique_ptr<X11Keystrokes>> create(std::shared_ptr<X11Connection> connection);

    // X has no permission to post input: always true.
    bool isAccessibilityTrusted() override { return true; }
    // False for a key the core's table or the current layout has no key for, or when the server did not
    // take the events in time.
    bool postKey(std::uint32_t keyCode, std::uint64_t flags) override;
    // Applications on X11 paste with Ctrl+V; Super (the core's Command) is the desktop's own.
    bool postPaste() override { return postKey(KeyCode::v, EventFlags::control); }

private:
    X11Keystrokes(std::shared_ptr<X11Connection> connection, std::unique_ptr<X11Keymap> keymap);

    std::shared_ptr<X11Connection> m_connection;
    std::unique_ptr<X11Keymap> m_keymap;
};

} // namespace quillmar
