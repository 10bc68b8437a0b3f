#pragma once

#include "core/snippets/TextFocus.h"

namespace quillmar {

// Nothing is known about the focus: no field takes text, so expansions are left on the clipboard.
class UnsupportedTextFocus final : public TextFocus {
public:
    bool isSecureInputOn() const override;
    FocusedField focusedField() const override;
    bool isOnScreenKeyboard(InputEvent::Location location) const override;
};

} // namespace quillmar
