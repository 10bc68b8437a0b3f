#include "core/capture/ScrollMatcher.h"

#include <algorithm>

namespace quillmar {

namespace {

int rowCount(std::span<const RowSignature> rows)
{
    return static_cast<int>(rows.size());
}

const RowSignature& at(std::span<const RowSignature> rows, int index)
{
    return rows[static_cast<std::size_t>(index)];
}

// `score`, abandoned with nullopt as soon as it cannot reach more than `toBeat` matched rows.
std::optional<MatchScore> scoreAbove(std::span<const RowSignature> previous, std::span<const RowSignature> current,
    int shift, int toBeat)
{
    int overlap = std::min(rowCount(current), rowCount(previous) - shift);
    MatchScore result;
    int budget = overlap - toBeat; // rows that may still fail before the candidate cannot win
    if (budget <= 0)
        return std::nullopt;
    for (int i = 0; i < overlap; ++i) {
        const auto& now = at(current, i);
        if (now.flagged) {
            if (--budget <= 0)
                return std::nullopt;
            continue;
        }
        ++result.compared;
        const auto& before = at(previous, i + shift);
        if (!before.flagged && before.hash == now.hash)
            ++result.matched;
        else if (--budget <= 0)
            return std::nullopt;
    }
    return result;
}

} // namespace

MatchScore ScrollMatcher::score(std::span<const RowSignature> previous, std::span<const RowSignature> current, int shift)
{
    if (shift < 0 || shift >= rowCount(previous))
        return {};
    return *scoreAbove(previous, current, shift, /*toBeat=*/-rowCount(current) - 1);
}

int ScrollMatcher::margin(int rows)
{
    return rows > 119 ? rows / 10 : 12;
}

bool ScrollMatcher::acceptable(MatchScore score)
{
    return score.compared >= minimumCompared && score.matched >= minimumMatched && score.matched * 2 > score.compared;
}

ScrollMatch ScrollMatcher::match(std::span<const RowSignature> previous, std::span<const RowSignature> current,
    std::optional<int> hint)
{
    int rows = std::min(rowCount(previous), rowCount(current));
    int lastShift = rows - margin(rows);

    ScrollMatch best;
    bool anyJudged = false; // some candidate had enough rows to compare
    auto consider = [&](int shift) {
        bool haveBest = best.outcome == ScrollMatch::Outcome::accepted;
        auto candidate = scoreAbove(previous, current, shift, haveBest ? best.score.matched : -1);
        if (!candidate) {
            // Abandoned only after more rows failed than a winner may lose, so it could be judged.
            anyJudged = true;
            return;
        }
        if (candidate->compared >= minimumCompared)
            anyJudged = true;
        if (acceptable(*candidate) && (!haveBest || candidate->matched > best.score.matched))
            best = { ScrollMatch::Outcome::accepted, shift, *candidate };
    };

    if (hint && *hint >= 0 && *hint <= lastShift)
        consider(*hint);
    for (int shift = 0; shift <= lastShift; ++shift) {
        if (hint && shift == *hint)
            continue;
        // The overlap shrinks as the shift grows: once it cannot hold more rows than the best has
        // matched, no later candidate can win.
        int overlap = std::min(rowCount(current), rowCount(previous) - shift);
        if (best.outcome == ScrollMatch::Outcome::accepted && overlap <= best.score.matched)
            break;
        consider(shift);
    }
    if (best.outcome != ScrollMatch::Outcome::accepted && anyJudged)
        best.outcome = ScrollMatch::Outcome::lost;
    return best;
}

int ScrollMatcher::staticBottomRows(std::span<const RowSignature> previous, std::span<const RowSignature> current)
{
    int n = std::min(rowCount(previous), rowCount(current));
    if (n < 3)
        return 0;
    int count = 0;
    while (count < n && at(previous, rowCount(previous) - 1 - count) == at(current, rowCount(current) - 1 - count))
        ++count;
    return std::min(count, n / 3);
}

} // namespace quillmar
