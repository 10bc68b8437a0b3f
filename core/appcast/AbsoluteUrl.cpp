#include "core/appcast/AbsoluteUrl.h"

#include <algorithm>

namespace quillmar {

namespace {

bool isAsciiLetter(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool isSchemeCharacter(char character)
{
    return isAsciiLetter(character) || (character >= '0' && character <= '9') || character == '+' || character == '-'
        || character == '.';
}

bool isForbidden(char character)
{
    auto byte = static_cast<unsigned char>(character);
    return byte <= 0x20 || byte == 0x7F;
}

} // namespace

std::optional<std::string> AbsoluteUrl::validated(std::string_view text)
{
    if (std::any_of(text.begin(), text.end(), isForbidden))
        return std::nullopt;
    auto colon = text.find(':');
    if (colon == std::string_view::npos || colon == 0 || !isAsciiLetter(text.front()))
        return std::nullopt;
    auto scheme = text.substr(0, colon);
    if (!std::all_of(scheme.begin(), scheme.end(), isSchemeCharacter))
        return std::nullopt;
    auto rest = text.substr(colon + 1);
    // What names the resource: the part before any query or fragment.
    auto resource = rest.substr(0, rest.find_first_of("?#"));
    if (resource.substr(0, 2) == "//") {
        auto authorityAndPath = resource.substr(2);
        auto slash = authorityAndPath.find('/');
        auto authority = authorityAndPath.substr(0, slash);
        auto path = slash == std::string_view::npos ? std::string_view() : authorityAndPath.substr(slash);
        // The host is what remains without the user ("user@") and the port (":443").
        auto host = authority.substr(authority.rfind('@') == std::string_view::npos ? 0 : authority.rfind('@') + 1);
        if (!host.empty() && host.front() != '[')
            host = host.substr(0, host.find(':'));
        if (host.empty() && (path.empty() || path == "/"))
            return std::nullopt;
    } else if (resource.empty()) {
        return std::nullopt;
    }
    return std::string(text);
}

} // namespace quillmar
