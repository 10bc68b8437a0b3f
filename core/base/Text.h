#pragma once

#include <cstddef>
#include <string>
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

// ASCII case mapping: only A-Z and a-z change; every other byte, UTF-8 included, stays as it is, whatever
// the process locale.
constexpr char asciiLower(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

constexpr char asciiUpper(char character)
{
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

inline std::string asciiLower(std::string_view text)
{
    std::string result(text);
    for (auto& character : result)
        character = asciiLower(character);
    return result;
}

inline std::string asciiUpper(std::string_view text)
{
    std::string result(text);
    for (auto& character : result)
        character = asciiUpper(character);
    return result;
}

// Whether `a` and `b` are the same text when ASCII letters are compared without case.
constexpr bool equalsIgnoringAsciiCase(std::string_view a, std::string_view b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t index = 0; index < a.size(); ++index) {
        if (asciiLower(a[index]) != asciiLower(b[index]))
            return false;
    }
    return true;
}

// Whether `text` begins with `prefix`, ASCII letters compared without case.
constexpr bool startsWithIgnoringAsciiCase(std::string_view text, std::string_view prefix)
{
    return text.size() >= prefix.size() && equalsIgnoringAsciiCase(text.substr(0, prefix.size()), prefix);
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
