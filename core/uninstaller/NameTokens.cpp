#include "core/uninstaller/NameTokens.h"

#include <algorithm>

#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include "core/base/Utf8.h"

namespace quillmar::NameTokens {

namespace {

// Words this short are too common to tell applications apart ("the", "app", "x").
constexpr std::int32_t shortestToken = 4;

bool isWordCharacter(char32_t codePoint)
{
    auto category = U_GET_GC_MASK(static_cast<UChar32>(codePoint));
    return (category & (U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK)) != 0;
}

void keep(std::u32string& word, std::vector<std::string>& tokens)
{
    if (word.empty())
        return;
    icu::UnicodeString text;
    for (char32_t codePoint : word)
        text.append(static_cast<UChar32>(codePoint));
    word.clear();
    text.toLower(icu::Locale::getRoot());
    if (text.countChar32() < shortestToken)
        return;
    std::string lowered;
    text.toUTF8String(lowered);
    if (std::find(stopWords.begin(), stopWords.end(), lowered) != stopWords.end())
        return;
    tokens.push_back(std::move(lowered));
}

} // namespace

std::vector<std::string> split(std::string_view text)
{
    std::vector<std::string> tokens;
    std::u32string word;
    for (char32_t codePoint : decodeUtf8(text)) {
        if (isWordCharacter(codePoint))
            word.push_back(codePoint);
        else
            keep(word, tokens);
    }
    keep(word, tokens);
    return tokens;
}

} // namespace quillmar::NameTokens
