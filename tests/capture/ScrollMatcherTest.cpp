#include <gtest/gtest.h>

#include "core/capture/ScrollMatcher.h"

namespace quillmar {
namespace {

using Rows = std::vector<RowSignature>;
using Outcome = ScrollMatch::Outcome;

// Rows with hashes first, first + 1, ...: every row distinct.
Rows distinct(int first, int count)
{
    Rows rows;
    for (int i = 0; i < count; ++i)
        rows.push_back({ static_cast<std::uint64_t>(first + i), false });
    return rows;
}

Rows flagged(int count)
{
    return Rows(static_cast<std::size_t>(count), RowSignature { 7, true });
}

Rows join(std::initializer_list<Rows> parts)
{
    Rows rows;
    for (const auto& part : parts)
        rows.insert(rows.end(), part.begin(), part.end());
    return rows;
}

// `previous` scrolled by `shift`: its rows from `shift` on, then new rows.
Rows scrolled(const Rows& previous, int shift, int newFirst = 1000)
{
    Rows rows(previous.begin() + shift, previous.end());
    auto added = distinct(newFirst, shift);
    rows.insert(rows.end(), added.begin(), added.end());
    return rows;
}

struct ScoreRow {
    const char* name;
    Rows previous;
    Rows current;
    int shift;
    MatchScore expected;
};

void PrintTo(const ScoreRow& row, std::ostream* out)
{
    *out << row.name;
}

class ScrollMatcherScore : public testing::TestWithParam<ScoreRow> { };

TEST_P(ScrollMatcherScore, Counts)
{
    const auto& row = GetParam();
    EXPECT_EQ(ScrollMatcher::score(row.previous, row.current, row.shift), row.expected);
}

INSTANTIATE_TEST_SUITE_P(Table, ScrollMatcherScore,
    testing::Values(
        ScoreRow { "identicalAtZero", distinct(0, 10), distinct(0, 10), 0, { 10, 10 } },
        ScoreRow { "shiftComparesOnlyTheOverlap", distinct(0, 10), distinct(3, 10), 3, { 7, 7 } },
        ScoreRow { "wrongShiftComparesButMatchesNothing", distinct(0, 10), distinct(3, 10), 2, { 8, 0 } },
        ScoreRow { "flaggedCurrentRowsAreNotCompared", distinct(0, 10), join({ flagged(4), distinct(4, 6) }), 0, { 6, 6 } },
        ScoreRow { "flaggedPreviousRowsAreComparedButNeverMatch", join({ flagged(4), distinct(4, 6) }),
            join({ Rows(4, RowSignature { 7, false }), distinct(4, 6) }), 0, { 10, 6 } },
        ScoreRow { "equalHashesWithBothFlaggedDoNotCount", flagged(10), flagged(10), 0, { 0, 0 } },
        ScoreRow { "shorterCurrentFrameLimitsTheOverlap", distinct(0, 10), distinct(2, 4), 2, { 4, 4 } },
        ScoreRow { "negativeShiftIsNothing", distinct(0, 10), distinct(0, 10), -1, { 0, 0 } },
        ScoreRow { "shiftPastThePreviousFrameIsNothing", distinct(0, 10), distinct(0, 10), 10, { 0, 0 } },
        ScoreRow { "emptyCurrentFrame", distinct(0, 10), {}, 0, { 0, 0 } }),
    [](const testing::TestParamInfo<ScoreRow>& row) { return std::string(row.param.name); });

struct MatchRow {
    const char* name;
    Rows previous;
    Rows current;
    std::optional<int> hint;
    Outcome outcome;
    int shift; // when accepted
};

void PrintTo(const MatchRow& row, std::ostream* out)
{
    *out << row.name;
}

class ScrollMatcherMatch : public testing::TestWithParam<MatchRow> { };

TEST_P(ScrollMatcherMatch, Decides)
{
    const auto& row = GetParam();
    auto match = ScrollMatcher::match(row.previous, row.current, row.hint);
    EXPECT_EQ(match.outcome, row.outcome);
    if (row.outcome == Outcome::accepted) {
        EXPECT_EQ(match.shift, row.shift);
    }
}

// Rows repeating every 8, `count` of them.
Rows periodic(int count)
{
    Rows rows;
    for (int i = 0; i < count; ++i)
        rows.push_back({ static_cast<std::uint64_t>(i % 8), false });
    return rows;
}

// Against periodic(60), shifts 0, 8, 16 and 24 all match these 30 rows.
Rows periodicOverBlank()
{
    return join({ periodic(30), flagged(30) });
}

// A 30-row sticky header and 40-row footer around 230 rows of content, scrolled by `shift`.
Rows withBars(int contentFirst)
{
    return join({ distinct(5000, 30), distinct(contentFirst, 230), distinct(6000, 40) });
}

INSTANTIATE_TEST_SUITE_P(Table, ScrollMatcherMatch,
    testing::Values(
        MatchRow { "identicalFramesMatchAtZero", distinct(0, 60), distinct(0, 60), std::nullopt, Outcome::accepted, 0 },
        MatchRow { "smallScroll", distinct(0, 60), scrolled(distinct(0, 60), 7), std::nullopt, Outcome::accepted, 7 },
        MatchRow { "scrollUpToTheMargin", distinct(0, 60), scrolled(distinct(0, 60), 48), std::nullopt, Outcome::accepted, 48 },
        MatchRow { "scrollIntoTheMarginIsNotTried", distinct(0, 60), scrolled(distinct(0, 60), 49), std::nullopt, Outcome::lost, 0 },
        MatchRow { "marginIsATenthOfTallFrames", distinct(0, 200), scrolled(distinct(0, 200), 181), std::nullopt, Outcome::lost, 0 },
        MatchRow { "tallFrameJustInsideItsMargin", distinct(0, 200), scrolled(distinct(0, 200), 180), std::nullopt, Outcome::accepted, 180 },
        MatchRow { "scrollBeyondTheFrameIsLost", distinct(0, 60), distinct(100, 60), std::nullopt, Outcome::lost, 0 },
        MatchRow { "correctHintIsAccepted", distinct(0, 60), scrolled(distinct(0, 60), 7), 7, Outcome::accepted, 7 },
        MatchRow { "wrongHintLosesToABetterShift", distinct(0, 60), scrolled(distinct(0, 60), 7), 3, Outcome::accepted, 7 },
        MatchRow { "hintBeyondTheCandidatesIsIgnored", distinct(0, 60), scrolled(distinct(0, 60), 7), 59, Outcome::accepted, 7 },
        MatchRow { "negativeHintIsIgnored", distinct(0, 60), scrolled(distinct(0, 60), 7), -3, Outcome::accepted, 7 },
        MatchRow { "onATieTheSmallestShiftWins", periodic(60), periodicOverBlank(), std::nullopt, Outcome::accepted, 0 },
        MatchRow { "onATieTheHintWins", periodic(60), periodicOverBlank(), 16, Outcome::accepted, 16 },
        MatchRow { "stickyBarsDoNotHideTheScroll", withBars(0), withBars(60), std::nullopt, Outcome::accepted, 60 },
        MatchRow { "onlyStickyBarsMatchingIsLost", withBars(0), withBars(1000), std::nullopt, Outcome::lost, 0 },
        MatchRow { "blankFramesCannotBeJudged", flagged(60), flagged(60), std::nullopt, Outcome::unusable, 0 },
        MatchRow { "sevenComparableRowsAreTooFew", join({ distinct(0, 7), flagged(53) }), join({ distinct(0, 7), flagged(53) }),
            std::nullopt, Outcome::unusable, 0 },
        MatchRow { "eightComparableRowsAreEnough", join({ distinct(0, 8), flagged(52) }), join({ distinct(0, 8), flagged(52) }),
            std::nullopt, Outcome::accepted, 0 },
        MatchRow { "halfMatchedIsNotEnough", distinct(0, 40), join({ distinct(0, 20), distinct(500, 20) }), std::nullopt, Outcome::lost, 0 },
        MatchRow { "moreThanHalfMatchedIs", distinct(0, 40), join({ distinct(0, 21), distinct(500, 19) }), std::nullopt, Outcome::accepted, 0 },
        MatchRow { "framesBelowTwelveRowsHaveNoCandidates", distinct(0, 11), distinct(0, 11), std::nullopt, Outcome::unusable, 0 }),
    [](const testing::TestParamInfo<MatchRow>& row) { return std::string(row.param.name); });

TEST(ScrollMatcher, StickyBarsLowerTheScoreButTheContentStillWins)
{
    // Shift 0 matches the 70 bar rows of 300; at shift 60 the header and the 40 rows the old footer
    // covered disagree, and the 170 content rows between them match.
    EXPECT_EQ(ScrollMatcher::score(withBars(0), withBars(60), 0), (MatchScore { 300, 70 }));
    auto match = ScrollMatcher::match(withBars(0), withBars(60), std::nullopt);
    EXPECT_EQ(match.score, (MatchScore { 240, 170 }));
}

struct StaticRow {
    const char* name;
    Rows previous;
    Rows current;
    int expected;
};

void PrintTo(const StaticRow& row, std::ostream* out)
{
    *out << row.name;
}

class ScrollMatcherStaticBottom : public testing::TestWithParam<StaticRow> { };

TEST_P(ScrollMatcherStaticBottom, Counts)
{
    const auto& row = GetParam();
    EXPECT_EQ(ScrollMatcher::staticBottomRows(row.previous, row.current), row.expected);
}

INSTANTIATE_TEST_SUITE_P(Table, ScrollMatcherStaticBottom,
    testing::Values(
        StaticRow { "noFooter", distinct(0, 30), distinct(5, 30), 0 },
        StaticRow { "footerRowsCountFromTheBottom", join({ distinct(0, 25), distinct(900, 5) }), join({ distinct(5, 25), distinct(900, 5) }), 5 },
        StaticRow { "theFirstDifferenceStops", join({ distinct(0, 20), distinct(900, 10) }),
            join({ distinct(5, 20), distinct(900, 4), distinct(77, 1), distinct(905, 5) }), 5 },
        StaticRow { "equalFlaggedRowsCount", join({ distinct(0, 25), flagged(5) }), join({ distinct(5, 25), flagged(5) }), 5 },
        StaticRow { "flagMustAgreeToo", join({ distinct(0, 29), Rows { { 7, false } } }), join({ distinct(5, 29), Rows { { 7, true } } }), 0 },
        StaticRow { "atMostAThird", join({ distinct(0, 10), distinct(900, 20) }), join({ distinct(5, 10), distinct(900, 20) }), 10 },
        StaticRow { "identicalFramesAreAThirdStatic", distinct(0, 300), distinct(0, 300), 100 },
        StaticRow { "aThirdOfTheShorterFrame", distinct(0, 30), distinct(10, 20), 6 },
        StaticRow { "belowThreeRowsNothing", distinct(0, 2), distinct(0, 2), 0 },
        StaticRow { "threeRowsOneAtMost", distinct(0, 3), distinct(0, 3), 1 }),
    [](const testing::TestParamInfo<StaticRow>& row) { return std::string(row.param.name); });

} // namespace
} // namespace quillmar
