#include "core/base/TextCollation.h"

#include <algorithm>
#include <cstdint>

#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

namespace quillmar {

namespace {

icu::UnicodeString unicode(std::string_view text)
{
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
}

} // namespace

TextCollation::TextCollation()
{
    UErrorCode status = U_ZERO_ERROR;
    auto locale = icu::Locale::getDefault();
    if (std::string_view(locale.getVariant()) == "POSIX" || std::string_view(locale.getLanguage()).empty())
        locale = icu::Locale::getRoot();
    m_collator.reset(icu::Collator::createInstance(locale, status));
    if (U_FAILURE(status) || !m_collator) {
        status = U_ZERO_ERROR;
        m_collator.reset(icu::Collator::createInstance(icu::Locale::getRoot(), status));
        if (U_FAILURE(status))
            m_collator.reset();
    }
    // Secondary strength: base letters and accents count, case does not.
    if (m_collator)
        m_collator->setStrength(icu::Collator::SECONDARY);
}

TextCollation::~TextCollation() = default;

std::string TextCollation::sortKey(std::string_view text) const
{
    if (!m_collator)
        return std::string(text); // ICU without collation data: byte order is the best left
    auto value = unicode(text);
    std::int32_t length = m_collator->getSortKey(value, nullptr, 0);
    std::string key(static_cast<std::size_t>(std::max(length, 0)), '\0');
    m_collator->getSortKey(value, reinterpret_cast<std::uint8_t*>(key.data()), length);
    return key;
}

int TextCollation::compare(std::string_view a, std::string_view b) const
{
    if (!m_collator)
        return a.compare(b);
    UErrorCode status = U_ZERO_ERROR;
    auto order = m_collator->compare(unicode(a), unicode(b), status);
    if (U_FAILURE(status))
        return a.compare(b);
    return order == UCOL_LESS ? -1 : (order == UCOL_GREATER ? 1 : 0);
}

} // namespace quillmar
