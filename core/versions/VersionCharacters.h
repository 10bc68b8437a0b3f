#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillmar {

// What a character of version text counts as. "Letter" is any Unicode letter category (Lu, Ll, Lt, Lm, Lo),
// "number" any number category (Nd, Nl, No); everything else, and every byte of ill-formed UTF-8, is
// `other`, which separates the parts of a version.
enum class VersionCharacterClass : unsigned char { letter, number, other };

// One character of UTF-8 text: `length` bytes starting at `offset`. A byte that does not start a well-formed
// sequence (a stray continuation byte, an overlong form, a surrogate, a value above U+10FFFF, a cut-off
// sequence) is a character of its own, one byte long, of class `other`, with `codePoint` 0xFFFD.
struct VersionCharacter {
    std::size_t offset = 0;
    std::size_t length = 0;
    char32_t codePoint = 0;
    VersionCharacterClass characterClass = VersionCharacterClass::other;
};

// The character of `text` that starts at byte `offset`; `offset` must be below the text's size.
VersionCharacter versionCharacterAt(std::string_view text, std::size_t offset);

// `text` without Unicode white space (the White_Space property: spaces, tabs, line breaks, no-break and
// ideographic spaces, U+0085, U+2028, ...) at either end.
std::string_view trimmedUnicodeSpace(std::string_view text);

// The full Unicode lower-case mapping with no locale ("İ" becomes "i̇"); ASCII text takes a path without
// ICU. Ill-formed UTF-8 reads as U+FFFD.
std::string lowercasedText(std::string_view text);

// True when `text` is not empty and every character of it is a number.
bool isAllNumbers(std::string_view text);

} // namespace quillmar
