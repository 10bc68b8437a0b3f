#include "core/uninstaller/ProtectedIdentifiers.h"

#include "core/base/Text.h"

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
    return startsWithIgnoringAsciiCase(identifier, ownPrefix);
}

} // namespace quillmar::ProtectedIdentifiers
