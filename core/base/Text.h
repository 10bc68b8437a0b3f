#pragma once

#include <string_view>

namespace quillmar {

// Space, tab, line feed and carriage return: the separators typed or pasted text carries at its ends.
constexpr bool isAsciiSpace(char character)
{
    return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

// `text` without ASCII white space at either end.
constexpr std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isAsciiSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isAsciiSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

} // namespace quillmar
