#include "core/base/SearchFolding.h"

#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

namespace quillmar {

namespace {

struct Normalizers {
    const icu::Normalizer2* nfd = nullptr;
    const icu::Normalizer2* nfc = nullptr;
    const icu::Normalizer2* nfkcCasefold = nullptr;
    bool ok = false;
};

// ICU's own instances, looked up once: they come from its built-in data and live for the process.
const Normalizers& normalizers()
{
    static const Normalizers instances = [] {
        UErrorCode status = U_ZERO_ERROR;
        Normalizers found;
        found.nfd = icu::Normalizer2::getNFDInstance(status);
        found.nfc = icu::Normalizer2::getNFCInstance(status);
        found.nfkcCasefold = icu::Normalizer2::getNFKCCasefoldInstance(status);
        found.ok = U_SUCCESS(status);
        return found;
    }();
    return instances;
}

// `text` decomposed, its non-spacing marks dropped and the rest recomposed; false when ICU failed.
bool removeAccents(icu::UnicodeString& text)
{
    const auto& forms = normalizers();
    if (!forms.ok)
        return false;
    UErrorCode status = U_ZERO_ERROR;
    auto decomposed = forms.nfd->normalize(text, status);
    icu::UnicodeString kept;
    for (int32_t index = 0; index < decomposed.length();) {
        UChar32 codePoint = decomposed.char32At(index);
        if (u_charType(codePoint) != U_NON_SPACING_MARK)
            kept.append(codePoint);
        index += U16_LENGTH(codePoint);
    }
    auto composed = forms.nfc->normalize(kept, status);
    if (U_FAILURE(status))
        return false;
    text = std::move(composed);
    return true;
}

icu::UnicodeString fromUtf8(std::string_view text)
{
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
}

} // namespace

std::string foldedForSearch(std::string_view text)
{
    auto string = fromUtf8(text);
    string.foldCase(U_FOLD_CASE_DEFAULT);
    // Should ICU fail, case-insensitive search still works on the case-folded text.
    removeAccents(string);
    std::string result;
    string.toUTF8String(result);
    return result;
}

std::u32string foldedForSearch(std::u32string_view codePoints)
{
    auto string = icu::UnicodeString::fromUTF32(reinterpret_cast<const UChar32*>(codePoints.data()),
        static_cast<int32_t>(codePoints.size()));
    string.foldCase(U_FOLD_CASE_DEFAULT);
    if (!removeAccents(string))
        return {};
    std::u32string result;
    for (int32_t index = 0; index < string.length();) {
        UChar32 codePoint = string.char32At(index);
        result.push_back(static_cast<char32_t>(codePoint));
        index += U16_LENGTH(codePoint);
    }
    return result;
}

std::string foldedLoosely(std::string_view text)
{
    const auto& forms = normalizers();
    if (!forms.ok)
        return {};
    UErrorCode status = U_ZERO_ERROR;
    auto string = forms.nfkcCasefold->normalize(fromUtf8(text), status);
    if (U_FAILURE(status) || !removeAccents(string))
        return {};
    string.toLower(icu::Locale::getRoot());
    icu::UnicodeString kept;
    for (int32_t index = 0; index < string.length();) {
        UChar32 codePoint = string.char32At(index);
        if (!u_isUWhiteSpace(codePoint))
            kept.append(codePoint);
        index += U16_LENGTH(codePoint);
    }
    std::string result;
    kept.toUTF8String(result);
    return result;
}

} // namespace quillmar
