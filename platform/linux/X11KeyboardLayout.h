#pragma once

#include <xkbcommon/xkbcommon-compose.h>

#include <memory>

#include "core/base/Result.h"
#include "core/desktop/KeyboardLayout.h"
#include "platform/linux/X11Keymap.h"

namespace quillmar {

// What key presses type in the X server's current layout, through xkbcommon: the key is found by its
// keysym in the current layout, its modifiers come from the event, the layout group and NumLock from the
// server's state. Dead keys and compose sequences follow the locale's compose table (LC_ALL, LC_CTYPE,
// LANG): a press that only starts a sequence types nothing, the one that ends it types the result.
class X11KeyboardLayout final : public KeyboardLayout {
public:
    static Result<std::unique_ptr<X11KeyboardLayout>> create(std::shared_ptr<X11Connection> connection);

    std::string characters(const InputEvent& event) override;

    X11Keymap& keymap() { return *m_keymap; }

private:
    explicit X11KeyboardLayout(std::unique_ptr<X11Keymap> keymap);

    std::unique_ptr<X11Keymap> m_keymap;
    std::unique_ptr<xkb_context, void (*)(xkb_context*)> m_context;
    std::unique_ptr<xkb_compose_table, void (*)(xkb_compose_table*)> m_composeTable;
    std::unique_ptr<xkb_compose_state, void (*)(xkb_compose_state*)> m_compose;
};

} // namespace quillmar
