#pragma once

#include <string>
#include <string_view>

namespace quillmar {

// Decodes UTF-8 into code points. Ill-formed sequences (stray continuation bytes, overlong forms,
// surrogates, values above U+10FFFF) are dropped, so the result always re-encodes cleanly.
std::u32string decodeUtf8(std::string_view text);

std::string encodeUtf8(std::u32string_view codePoints);

bool isValidUtf8(std::string_view text);

// The simple (one-to-one) Unicode upper-case mapping; a code point without one is returned unchanged
// ("ß" stays "ß").
char32_t upperCase(char32_t codePoint);

} // namespace quillmar
