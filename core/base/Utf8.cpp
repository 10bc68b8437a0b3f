#include "core/base/Utf8.h"

#include <cstdint>

#include <unicode/uchar.h>
#include <unicode/utf8.h>

// ICU's UTF-8 macros mix signed and unsigned arithmetic inside their expansion.
#pragma GCC diagnostic ignored "-Wsign-conversion"
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wold-style-cast"

namespace quillmar {

std::u32string decodeUtf8(std::string_view text)
{
    std::u32string codePoints;
    codePoints.reserve(text.size());
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    auto length = static_cast<std::int32_t>(text.size());
    std::int32_t offset = 0;
    while (offset < length) {
        UChar32 codePoint = 0;
        U8_NEXT(bytes, offset, length, codePoint);
        if (codePoint >= 0)
            codePoints.push_back(static_cast<char32_t>(codePoint));
    }
    return codePoints;
}

std::string encodeUtf8(std::u32string_view codePoints)
{
    std::string text;
    text.reserve(codePoints.size());
    for (char32_t codePoint : codePoints) {
        std::uint8_t buffer[U8_MAX_LENGTH];
        std::int32_t length = 0;
        UBool failed = false;
        U8_APPEND(buffer, length, U8_MAX_LENGTH, static_cast<UChar32>(codePoint), failed);
        if (!failed)
            text.append(reinterpret_cast<const char*>(buffer), static_cast<std::size_t>(length));
    }
    return text;
}

bool isValidUtf8(std::string_view text)
{
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    auto length = static_cast<std::int32_t>(text.size());
    std::int32_t offset = 0;
    while (offset < length) {
        UChar32 codePoint = 0;
        U8_NEXT(bytes, offset, length, codePoint);
        if (codePoint < 0)
            return false;
    }
    return true;
}

char32_t upperCase(char32_t codePoint)
{
    return static_cast<char32_t>(u_toupper(static_cast<UChar32>(codePoint)));
}

} // namespace quillmar
