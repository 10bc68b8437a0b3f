#include <gtest/gtest.h>

#include <random>

#include "core/commandbar/CommandMatcher.h"

namespace quillmar {
namespace {

using Positions = std::vector<std::size_t>;

struct ScoreRow {
    const char* name;
    std::string query;
    std::string title;
    double raw; // the table's best cell plus the whole-title bonus, before the length penalty
    Positions positions;
};

// Normalises as the matcher does: the length penalty, then the division by 30n + 20.
double expectedScore(const ScoreRow& row, std::size_t queryLength, std::size_t titleLength)
{
    double value = row.raw - 0.12 * static_cast<double>(std::min<std::size_t>(titleLength, 40));
    return std::max(value / (30.0 * static_cast<double>(queryLength) + 20.0), 0.0);
}

class MatchScoreTest : public testing::TestWithParam<ScoreRow> { };

TEST_P(MatchScoreTest, ScoresAndPositions)
{
    const auto& row = GetParam();
    CommandMatcher matcher;
    auto prepared = matcher.prepare(row.query);
    auto match = matcher.match(prepared, row.title);
    ASSERT_TRUE(match.has_value());
    auto titleLength = matcher.prepare(row.title).size() + static_cast<std::size_t>(std::count(row.title.begin(), row.title.end(), ' '));
    EXPECT_NEAR(match->score, expectedScore(row, prepared.size(), titleLength), 1e-12);
    EXPECT_EQ(match->positions, row.positions);
}

// Each raw value is spelled out: first row 16 + boundary - min(j, 10) (+8 at 0); later rows 16 + boundary
// plus 10 after a neighbour or the carried gap value (3 to open, 0.6 a further character).
INSTANTIATE_TEST_SUITE_P(Table, MatchScoreTest,
    testing::Values(
        ScoreRow { "ExactTitle", "ab", "ab", (16 + 14 + 8) + (10 + 16 + 0) + 40.0, { 0, 1 } },
        ScoreRow { "SecondCharacterAtAWordStart", "ab", "a b", (38 - 3) + 16 + 11 + 12.0, { 0, 2 } },
        ScoreRow { "Prefix", "ab", "abc", 38 + (10 + 16) + 18.0, { 0, 1 } },
        ScoreRow { "ExactTitleIgnoresCaseAndAccents", "mail", "M\u00C1IL", 38 + 3 * (10 + 16) + 40.0, { 0, 1, 2, 3 } },
        ScoreRow { "GapOfOne", "ac", "abc", (38 - 3) + 16.0, { 0, 2 } },
        ScoreRow { "GapOfTwo", "ac", "abbc", (38 - 3 - 0.6) + 16.0, { 0, 3 } },
        ScoreRow { "LateFirstCharacterCostsItsPlace", "z", "aaaaaz", 16 - 5.0, { 5 } },
        ScoreRow { "LateFirstCharacterCostsAtMostTen", "z", "aaaaaaaaaaaaz", 16 - 10.0, { 12 } },
        ScoreRow { "CamelCaseHump", "gh", "GitHub", (38 - 3 - 0.6) + 16 + 5.5, { 0, 3 } },
        ScoreRow { "AllAtWordStarts", "vs", "Visual Studio", (38 - 3 - 0.6 * 5) + 16 + 11 + 12.0, { 0, 7 } },
        ScoreRow { "ConsecutiveBeatsALowerGap", "ab", "a_ab", (16 + 11 - 2) + 10 + 16.0, { 2, 3 } },
        ScoreRow { "GapBeatsALowerRun", "ab", "a-xab", (38 - 3 - 0.6 - 0.6) + 16.0, { 0, 4 } },
        ScoreRow { "WhitespaceInTheQueryIsDropped", "a b", "ab", 38 + 26 + 40.0, { 0, 1 } },
        ScoreRow { "LongTitleIsPenalisedForFortyCharactersAtMost",
            "a", "a" + std::string(50, 'x'), 38 + 18.0, { 0 } }),
    [](const auto& row) { return std::string(row.param.name); });

struct BoundaryRow {
    const char* name;
    std::string title; // the query "b" matches the last character
    double boundary;
};

class BoundaryTest : public testing::TestWithParam<BoundaryRow> { };

TEST_P(BoundaryTest, BonusOfTheCharacterAfter)
{
    CommandMatcher matcher;
    const auto& row = GetParam();
    auto match = matcher.match(matcher.prepare("b"), row.title);
    ASSERT_TRUE(match.has_value());
    double expected = (16 + row.boundary - 2 - 0.12 * 3) / 50;
    EXPECT_NEAR(match->score, expected, 1e-12);
}

INSTANTIATE_TEST_SUITE_P(Separators, BoundaryTest,
    testing::Values(BoundaryRow { "Hyphen", "a-b", 11 }, BoundaryRow { "Underscore", "a_b", 11 },
        BoundaryRow { "Dot", "a.b", 11 }, BoundaryRow { "Slash", "a/b", 11 }, BoundaryRow { "Backslash", "a\\b", 11 },
        BoundaryRow { "Colon", "a:b", 11 }, BoundaryRow { "Comma", "a,b", 11 }, BoundaryRow { "Plus", "a+b", 11 },
        BoundaryRow { "Parenthesis", "a(b", 11 }, BoundaryRow { "Space", "a b", 11 }, BoundaryRow { "Tab", "a\tb", 11 },
        BoundaryRow { "EnDash", "a\u2013b", 11 }, BoundaryRow { "ApostropheIsInsideAWord", "a'b", 0 },
        BoundaryRow { "CamelCase", "aaB", 5.5 }, BoundaryRow { "UppercaseAfterUppercase", "AAB", 0 },
        BoundaryRow { "DigitBeforeALetter", "a1b", 0 }),
    [](const auto& row) { return std::string(row.param.name); });

TEST(CommandMatcherTest, NoMatchUnlessTheQueryIsASubsequence)
{
    CommandMatcher matcher;
    EXPECT_FALSE(matcher.match(matcher.prepare("ba"), "ab"));
    EXPECT_FALSE(matcher.match(matcher.prepare("abc"), "ab"));
    EXPECT_FALSE(matcher.match(matcher.prepare(" \t"), "ab")) << "an empty prepared query matches nothing";
    EXPECT_FALSE(matcher.match(matcher.prepare("a"), ""));
    EXPECT_FALSE(matcher.match(matcher.prepare("e"), "\u00E6")) << "\u00E6 is a letter of its own, not an e";
}

TEST(CommandMatcherTest, AFarScatteredMatchScoresZeroNotBelow)
{
    CommandMatcher matcher;
    auto match = matcher.match(matcher.prepare("ab"), "a" + std::string(100, 'x') + "b");
    ASSERT_TRUE(match.has_value());
    EXPECT_EQ(match->score, 0.0);
    EXPECT_EQ(match->positions, (Positions { 0, 101 }));
}

// The table exactly as the rules read: every cell of every row, the carry started at the row's start.
std::optional<std::pair<double, Positions>> referenceScore(const std::vector<FoldedKey>& query,
    const std::vector<FoldedKey>& keys, const std::vector<float>& bonuses)
{
    const double impossible = -1e9;
    const std::size_t n = query.size();
    const std::size_t m = keys.size();
    if (n == 0 || m == 0)
        return std::nullopt;
    std::vector<std::vector<double>> table(n, std::vector<double>(m, impossible));
    std::vector<std::vector<int>> from(n, std::vector<int>(m, -1));
    for (std::size_t j = 0; j < m; ++j) {
        if (keys[j] == query[0])
            table[0][j] = 16 + bonuses[j] - static_cast<double>(std::min<std::size_t>(j, 10)) + (j == 0 ? 8 : 0);
    }
    for (std::size_t i = 1; i < n; ++i) {
        double carried = impossible;
        int carriedFrom = -1;
        for (std::size_t j = 0; j < m; ++j) {
            carried -= 0.6;
            if (j >= 2 && table[i - 1][j - 2] - 3 > carried) {
                carried = table[i - 1][j - 2] - 3;
                carriedFrom = static_cast<int>(j - 2);
            }
            if (keys[j] != query[i])
                continue;
            double consecutive = j >= 1 && table[i - 1][j - 1] > -5e8 ? table[i - 1][j - 1] + 10 : impossible;
            double best = consecutive;
            int bestFrom = static_cast<int>(j) - 1;
            if (carried > consecutive) {
                best = carried;
                bestFrom = carriedFrom;
            }
            if (best > -5e8) {
                table[i][j] = best + 16 + bonuses[j];
                from[i][j] = bestFrom;
            }
        }
    }
    double raw = impossible;
    std::size_t end = 0;
    for (std::size_t j = 0; j < m; ++j) {
        if (table[n - 1][j] > -5e8 && table[n - 1][j] > raw) {
            raw = table[n - 1][j];
            end = j;
        }
    }
    if (raw <= -5e8)
        return std::nullopt;
    Positions positions(n);
    positions[n - 1] = end;
    for (std::size_t i = n - 1; i > 0; --i)
        positions[i - 1] = static_cast<std::size_t>(from[i][positions[i]]);
    bool prefix = true;
    bool wordStarts = true;
    for (std::size_t i = 0; i < n; ++i) {
        prefix = prefix && positions[i] == i;
        wordStarts = wordStarts && bonuses[positions[i]] >= 11;
    }
    if (prefix && m == n)
        raw += 40;
    else if (prefix)
        raw += 18;
    else if (n > 1 && wordStarts)
        raw += 12;
    raw -= 0.12 * static_cast<double>(std::min<std::size_t>(m, 40));
    return std::pair { std::max(raw / (30.0 * static_cast<double>(n) + 20), 0.0), positions };
}

TEST(CommandMatcherTest, AgreesWithTheFullTableOnRandomTexts)
{
    // Few letters, cases and separators, so that queries match often and in many ways.
    const std::string alphabet = "abcAB -_";
    std::mt19937 random(42);
    auto text = [&](std::size_t length) {
        std::string made;
        for (std::size_t index = 0; index < length; ++index)
            made.push_back(alphabet[std::uniform_int_distribution<std::size_t>(0, alphabet.size() - 1)(random)]);
        return made;
    };
    CommandMatcher matcher;
    int matched = 0;
    for (int round = 0; round < 4000; ++round) {
        auto title = text(std::uniform_int_distribution<std::size_t>(1, 30)(random));
        auto prepared = matcher.prepare(text(std::uniform_int_distribution<std::size_t>(1, 6)(random)));
        std::vector<FoldedKey> keys;
        std::vector<float> bonuses;
        matcher.foldTarget(title, keys, bonuses);
        auto expected = referenceScore(prepared.keys, keys, bonuses);
        auto match = matcher.match(prepared, title);
        ASSERT_EQ(match.has_value(), expected.has_value()) << title;
        if (!match)
            continue;
        ++matched;
        ASSERT_EQ(match->score, expected->first) << title;
        ASSERT_EQ(match->positions, expected->second) << title;
    }
    EXPECT_GT(matched, 1000);
}

TEST(CommandMatcherTest, PositionsAndLengthsCountUserPerceivedCharacters)
{
    CommandMatcher matcher;
    // "é" decomposed is one character; the flag is one character.
    auto cafe = matcher.match(matcher.prepare("caf\u00E9 n"), "Cafe\u0301 Noir");
    ASSERT_TRUE(cafe.has_value());
    EXPECT_EQ(cafe->positions, (Positions { 0, 1, 2, 3, 5 }));
    auto flag = matcher.match(matcher.prepare("p"), "\U0001F1EB\U0001F1F7 Paris");
    ASSERT_TRUE(flag.has_value());
    EXPECT_EQ(flag->positions, (Positions { 2 }));
    // Start of a word after the space: 16 + 11 - 2, seven characters long.
    EXPECT_NEAR(flag->score, (16 + 11 - 2 - 0.12 * 7) / 50, 1e-12);
    auto lineBreak = matcher.match(matcher.prepare("ab"), "a\r\nb");
    ASSERT_TRUE(lineBreak.has_value());
    EXPECT_EQ(lineBreak->positions, (Positions { 0, 2 }));
}

TEST(CommandMatcherTest, EmojiQueryMatchesTheWholeCluster)
{
    CommandMatcher matcher;
    auto family = "\U0001F468\u200D\U0001F469\u200D\U0001F467";
    auto match = matcher.match(matcher.prepare(family), std::string("x ") + family);
    ASSERT_TRUE(match.has_value());
    EXPECT_EQ(match->positions, (Positions { 2 }));
    EXPECT_FALSE(matcher.match(matcher.prepare("\U0001F468"), std::string("x ") + family))
        << "a part of a cluster is not a character of the title";
}

TEST(CommandMatcherTest, PrepareFoldsAndDropsWhitespace)
{
    CommandMatcher matcher;
    auto prepared = matcher.prepare(" R\u00E9 sum\u00C9\n");
    EXPECT_EQ(prepared.characters, (std::vector<std::string> { "r", "e", "s", "u", "m", "e" }));
    prepared.truncate(2);
    EXPECT_EQ(prepared.characters, (std::vector<std::string> { "r", "e" }));
    EXPECT_EQ(prepared.keys, (std::vector<FoldedKey> { 'r', 'e' }));
}

TEST(CommandMatcherTest, HotPathAgreesWithTheConvenienceCall)
{
    // The same matcher scores targets of different lengths in turn: its scratch must not leak between them.
    CommandMatcher matcher;
    const std::string titles[] = { "Visual Studio Code", "a", "Terminal", "System Settings \u2014 Displays", "vsc" };
    auto prepared = matcher.prepare("vsc");
    for (const auto& title : titles) {
        CommandMatcher fresh;
        auto expected = fresh.match(fresh.prepare("vsc"), title);
        std::vector<FoldedKey> keys;
        std::vector<float> bonuses;
        matcher.foldTarget(title, keys, bonuses);
        auto score = matcher.score(prepared.keys, { keys, bonuses });
        ASSERT_EQ(score.has_value(), expected.has_value()) << title;
        if (!score)
            continue;
        EXPECT_EQ(*score, expected->score) << title;
        EXPECT_EQ(Positions(matcher.positions().begin(), matcher.positions().end()), expected->positions) << title;
    }
}

} // namespace
} // namespace quillmar
