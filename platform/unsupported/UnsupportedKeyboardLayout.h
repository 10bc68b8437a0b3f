#pragma once

#include "core/snippets/KeyboardLayout.h"

namespace quillmar {

// No keyboard layout to ask: keys type nothing, so no trigger ever fires.
class UnsupportedKeyboardLayout final : public KeyboardLayout {
public:
    std::string characters(const InputEvent& event) override;
};

} // namespace quillmar
