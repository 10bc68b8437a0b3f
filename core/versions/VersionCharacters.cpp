#include "core/versions/VersionCharacters.h"

#include <climits>

#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include "core/base/Text.h"

namespace quillmar {

namespace {

VersionCharacterClass classOf(char32_t codePoint)
{
    if (codePoint < 0x80) {
        if (codePoint >= '0' && codePoint <= '9')
            return VersionCharacterClass::number;
        if ((codePoint >= 'a' && codePoint <= 'z') || (codePoint >= 'A' && codePoint <= 'Z'))
            return VersionCharacterClass::letter;
        return VersionCharacterClass::other;
    }
    switch (u_charType(static_cast<UChar32>(codePoint))) {
    case U_UPPERCASE_LETTER:
    case U_LOWERCASE_LETTER:
    case U_TITLECASE_LETTER:
    case U_MODIFIER_LETTER:
    case U_OTHER_LETTER:
        return VersionCharacterClass::letter;
    case U_DECIMAL_DIGIT_NUMBER:
    case U_LETTER_NUMBER:
    case U_OTHER_NUMBER:
        return VersionCharacterClass::number;
    default:
        return VersionCharacterClass::other;
    }
}

bool isContinuation(unsigned char byte)
{
    return (byte & 0xC0) == 0x80;
}

bool isUnicodeSpace(char32_t codePoint)
{
    if (codePoint < 0x80)
        return codePoint == ' ' || (codePoint >= '\t' && codePoint <= '\r');
    return u_isUWhiteSpace(static_cast<UChar32>(codePoint));
}

// The code point of the well-formed sequence at `offset` and its length; length 0 when ill-formed.
std::pair<char32_t, std::size_t> decodeAt(std::string_view text, std::size_t offset)
{
    auto lead = static_cast<unsigned char>(text[offset]);
    if (lead < 0x80)
        return { lead, 1 };
    std::size_t length = 0;
    char32_t codePoint = 0;
    char32_t smallest = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
        codePoint = lead & 0x1Fu;
        smallest = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        codePoint = lead & 0x0Fu;
        smallest = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        codePoint = lead & 0x07u;
        smallest = 0x10000;
    } else {
        return { 0xFFFD, 0 };
    }
    if (text.size() - offset < length)
        return { 0xFFFD, 0 };
    for (std::size_t index = 1; index < length; ++index) {
        auto byte = static_cast<unsigned char>(text[offset + index]);
        if (!isContinuation(byte))
            return { 0xFFFD, 0 };
        codePoint = (codePoint << 6) | (byte & 0x3Fu);
    }
    if (codePoint < smallest || codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF))
        return { 0xFFFD, 0 };
    return { codePoint, length };
}

} // namespace

VersionCharacter versionCharacterAt(std::string_view text, std::size_t offset)
{
    auto [codePoint, length] = decodeAt(text, offset);
    if (length == 0)
        return { offset, 1, 0xFFFD, VersionCharacterClass::other };
    return { offset, length, codePoint, classOf(codePoint) };
}

std::string_view trimmedUnicodeSpace(std::string_view text)
{
    std::size_t begin = 0;
    while (begin < text.size()) {
        auto character = versionCharacterAt(text, begin);
        if (character.length == 1 && character.codePoint == 0xFFFD)
            break;
        if (!isUnicodeSpace(character.codePoint))
            break;
        begin += character.length;
    }
    std::size_t end = text.size();
    while (end > begin) {
        // Step back to the start of the last character: at most three continuation bytes before a lead.
        std::size_t start = end - 1;
        while (start > begin && end - start < 4 && isContinuation(static_cast<unsigned char>(text[start])))
            --start;
        auto character = versionCharacterAt(text, start);
        if (character.offset + character.length != end || !isUnicodeSpace(character.codePoint)
            || (character.length == 1 && character.codePoint == 0xFFFD))
            break;
        end = start;
    }
    return text.substr(begin, end - begin);
}

std::string lowercasedText(std::string_view text)
{
    std::string lowered(text);
    bool ascii = true;
    for (auto& byte : lowered) {
        if (static_cast<unsigned char>(byte) >= 0x80) {
            ascii = false;
            break;
        }
        byte = asciiLower(byte);
    }
    // Texts too long for ICU's 32-bit lengths keep their other characters as they are.
    if (ascii || text.size() > static_cast<std::size_t>(INT32_MAX))
        return lowered;
    auto unicode = icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
    unicode.toLower(icu::Locale::getRoot());
    lowered.clear();
    unicode.toUTF8String(lowered);
    return lowered;
}

bool isAllNumbers(std::string_view text)
{
    if (text.empty())
        return false;
    for (std::size_t offset = 0; offset < text.size();) {
        auto character = versionCharacterAt(text, offset);
        if (character.characterClass != VersionCharacterClass::number)
            return false;
        offset += character.length;
    }
    return true;
}

} // namespace quillmar
