#include "core/commandbar/CommandTitleCollation.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <string_view>

#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

namespace quillmar {

CommandTitleCollation::CommandTitleCollation()
{
    UErrorCode status = U_ZERO_ERROR;
    // A "C" or "POSIX" environment states no language; its collation would be code point order, which
    // puts "Zoom" before "apple". The root order serves everyone better there.
    auto locale = icu::Locale::getDefault();
    if (std::string_view(locale.getVariant()) == "POSIX" || std::string_view(locale.getLanguage()).empty())
        locale = icu::Locale::getRoot();
    m_collator.reset(icu::Collator::createInstance(locale, status));
    if (U_FAILURE(status) || !m_collator) {
        status = U_ZERO_ERROR;
        m_collator.reset(icu::Collator::createInstance(icu::Locale::getRoot(), status));
    }
    // Secondary strength: base letters and accents count, case does not.
    if (m_collator)
        m_collator->setStrength(icu::Collator::SECONDARY);
}

CommandTitleCollation::~CommandTitleCollation() = default;

std::vector<std::uint32_t> CommandTitleCollation::ranks(const std::vector<CommandCandidate>& candidates)
{
    // Sort keys once per title, then plain byte comparisons.
    std::vector<std::string> keys(candidates.size());
    for (std::size_t index = 0; index < candidates.size(); ++index) {
        if (!m_collator) {
            keys[index] = candidates[index].title;
            continue;
        }
        const auto& title = candidates[index].title;
        auto text = icu::UnicodeString::fromUTF8(icu::StringPiece(title.data(), static_cast<int32_t>(title.size())));
        std::int32_t length = m_collator->getSortKey(text, nullptr, 0);
        keys[index].resize(static_cast<std::size_t>(std::max(length, 0)));
        m_collator->getSortKey(text, reinterpret_cast<std::uint8_t*>(keys[index].data()), length);
    }
    std::vector<std::uint32_t> order(candidates.size());
    std::iota(order.begin(), order.end(), 0u);
    std::sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) { return keys[a] < keys[b]; });
    std::vector<std::uint32_t> ranks(candidates.size());
    std::uint32_t rank = 0;
    for (std::size_t place = 0; place < order.size(); ++place) {
        if (place > 0 && keys[order[place]] != keys[order[place - 1]])
            rank = static_cast<std::uint32_t>(place);
        ranks[order[place]] = rank;
    }
    return ranks;
}

} // namespace quillmar
