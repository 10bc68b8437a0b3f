#include "core/commandbar/CommandTitleCollation.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <string_view>

namespace quillmar {

std::vector<std::uint32_t> CommandTitleCollation::ranks(const std::vector<CommandCandidate>& candidates)
{
    // Sort keys once per title, then plain byte comparisons.
    std::vector<std::string> keys(candidates.size());
    for (std::size_t index = 0; index < candidates.size(); ++index)
        keys[index] = m_collation.sortKey(candidates[index].title);
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
