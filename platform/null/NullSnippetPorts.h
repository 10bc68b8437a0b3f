#pragma once

#include "core/desktop/KeyboardLayout.h"
#include "core/desktop/TextFocus.h"

namespace quillmar {

// The ports of text expansion where the system offers nothing: each answers "not here" and changes nothing.
// System factories hand them out for ports without a backend; the command line and the tests use them too.

// No keyboard layout to ask: keys type nothing, so no trigger ever fires.
class NullKeyboardLayout final : public KeyboardLayout {
public:
    std::string characters(const InputEvent& event) override;
};

// Nothing is known about the focus: no field takes text, so expansions are left on the clipboard.
class NullTextFocus final : public TextFocus {
public:
    bool isSecureInputOn() const override;
    FocusedField focusedField() const override;
    bool isOnScreenKeyboard(InputEvent::Location location) const override;
};

} // namespace quillmar
