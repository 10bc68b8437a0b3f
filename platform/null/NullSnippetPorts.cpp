#include "platform/null/NullSnippetPorts.h"

namespace quillmar {

std::string NullKeyboardLayout::characters(const InputEvent&)
{
    return {};
}

bool NullTextFocus::isSecureInputOn() const
{
    return false;
}

FocusedField NullTextFocus::focusedField() const
{
    return FocusedField::none;
}

bool NullTextFocus::isOnScreenKeyboard(InputEvent::Location) const
{
    return false;
}

} // namespace quillmar
