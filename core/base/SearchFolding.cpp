#include "core/base/SearchFolding.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

namespace quillmar {

std::string foldedForSearch(std::string_view text)
{
    auto string = icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
    string.foldCase();
    UErrorCode status = U_ZERO_ERROR;
    const auto* decomposer = icu::Normalizer2::getNFDInstance(status);
    icu::UnicodeString decomposed = U_SUCCESS(status) ? decomposer->normalize(string, status) : string;
    if (U_FAILURE(status))
        decomposed = string;
    icu::UnicodeString stripped;
    for (int32_t index = 0; index < decomposed.length();) {
        UChar32 codePoint = decomposed.char32At(index);
        if (u_charType(codePoint) != U_NON_SPACING_MARK)
            stripped.append(codePoint);
        index += U16_LENGTH(codePoint);
    }
    std::string result;
    stripped.toUTF8String(result);
    return result;
}

} // namespace quillmar
