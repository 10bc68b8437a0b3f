#pragma once

#include "core/desktop/InputEvent.h"

namespace quillmar {

// What has the keyboard focus, as far as inserting text goes.
enum class FocusedField {
    editableText, // a field that takes pasted text
    none,         // nothing that takes text
    secureText,   // a password field: it blocks typing
};

// Accessibility questions about the focused element and secure typing. Main thread only.
class TextFocus {
public:
    virtual ~TextFocus() = default;

    // True while any password field has secure typing on: keys typed then must never be read.
    virtual bool isSecureInputOn() const = 0;

    virtual FocusedField focusedField() const = 0;

    // True when `location` (global, top-left origin) is on the on-screen accessibility keyboard, whose
    // clicks type rather than move the caret.
    virtual bool isOnScreenKeyboard(InputEvent::Location location) const = 0;
};

} // namespace quillmar
