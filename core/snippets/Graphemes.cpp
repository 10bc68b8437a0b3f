#include "core/snippets/Graphemes.h"

#include <memory>

#include <unicode/brkiter.h>
#include <unicode/unistr.h>

namespace quillmar {

std::size_t graphemeCount(std::string_view text)
{
    if (text.empty())
        return 0;
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::BreakIterator> breaks(icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    auto string = icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
    if (U_FAILURE(status) || !breaks)
        return static_cast<std::size_t>(string.countChar32());
    breaks->setText(string);
    std::size_t count = 0;
    breaks->first();
    while (breaks->next() != icu::BreakIterator::DONE)
        ++count;
    return count;
}

} // namespace quillmar
