#include "platform/unsupported/UnsupportedTextFocus.h"

namespace quillmar {

bool UnsupportedTextFocus::isSecureInputOn() const
{
    return false;
}

FocusedField UnsupportedTextFocus::focusedField() const
{
    return FocusedField::none;
}

bool UnsupportedTextFocus::isOnScreenKeyboard(InputEvent::Location) const
{
    return false;
}

} // namespace quillmar
