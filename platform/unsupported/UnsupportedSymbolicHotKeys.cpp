#include "platform/unsupported/UnsupportedSymbolicHotKeys.h"

namespace quillmar {

std::optional<SymbolicHotKeys::Value> UnsupportedSymbolicHotKeys::value(int)
{
    return std::nullopt;
}

bool UnsupportedSymbolicHotKeys::setEnabled(int, bool)
{
    return false;
}

} // namespace quillmar
