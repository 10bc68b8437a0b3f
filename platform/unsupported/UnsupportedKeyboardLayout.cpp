#include "platform/unsupported/UnsupportedKeyboardLayout.h"

namespace quillmar {

std::string UnsupportedKeyboardLayout::characters(const InputEvent&)
{
    return {};
}

} // namespace quillmar
