#pragma once

#include "core/hotkeys/HotKeyRegistrar.h"

namespace quillmar {

// The ports of global hot keys where the system offers nothing: each answers "not here" and changes nothing.
// System factories hand them out for ports without a backend; the command line and the tests use them too.

// For systems without global hot keys: every registration is refused, so nothing is ever pressed.
class NullHotKeyRegistrar final : public HotKeyRegistrar {
public:
    std::optional<HotKeyRef> registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, HotKeyID id) override;
    void unregisterHotKey(HotKeyRef ref) override;
    void setPressedHandler(std::function<void(HotKeyID)> handler) override;
};

} // namespace quillmar
