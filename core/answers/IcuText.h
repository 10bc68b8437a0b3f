#pragma once

#include <string>
#include <string_view>

#include <unicode/unistr.h>

namespace quillmar {

// Conversions between UTF-8 and ICU strings.
inline icu::UnicodeString icuString(std::string_view utf8)
{
    return icu::UnicodeString::fromUTF8(icu::StringPiece(utf8.data(), static_cast<std::int32_t>(utf8.size())));
}

inline std::string utf8String(const icu::UnicodeString& text)
{
    std::string utf8;
    text.toUTF8String(utf8);
    return utf8;
}

} // namespace quillmar
