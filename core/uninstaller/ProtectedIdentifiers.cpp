#include "core/uninstaller/ProtectedIdentifiers.h"

#include <algorithm>

namespace quillmar::ProtectedIdentifiers {

bool isProtected(std::string_view identifier)
{
    return std::any_of(prefixes.begin(), prefixes.end(),
        [identifier](std::string_view prefix) { return identifier.starts_with(prefix); });
}

bool isOwn(std::string_view identifier)
{
    constexpr std::string_view ownPrefix = "com.quillmar.";
    if (identifier.size() < ownPrefix.size())
        return false;
    for (std::size_t index = 0; index < ownPrefix.size(); ++index) {
        char character = identifier[index];
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
        if (character != ownPrefix[index])
            return false;
    }
    return true;
}

} // namespace quillmar::ProtectedIdentifiers
