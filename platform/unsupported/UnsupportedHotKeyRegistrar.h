#pragma once

#include "core/hotkeys/HotKeyRegistrar.h"

namespace quillmar {

// For systems without global hot keys: every registration is refused, so nothing is ever pressed.
class UnsupportedHotKeyRegistrar final : public HotKeyRegistrar {
public:
    std::optional<HotKeyRef> registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, HotKeyID id) override;
    void unregisterHotKey(HotKeyRef ref) override;
    void setPressedHandler(std::function<void(HotKeyID)> handler) override;
};

} // namespace quillmar
