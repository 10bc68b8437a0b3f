#pragma once

#include <string_view>

namespace quillmar {

// Space, tab, line feed and carriage return: the separators typed or pasted text carries at its ends.
constexpr bool isAsciiSpace(char character)
{
    return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

// The value of a hexadecimal digit (either case), or -1 for any other character.
constexpr int hexDigitValue(char character)
{
    if (character >= '0' && character <= '9')
        return character - '0';
    if (character >= 'a' && character <= 'f')
        return character - 'a' + 10;
    if (character >= 'A' && character <= 'F')
        return character - 'A' + 10;
    return -1;
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
