#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "core/versions/AppVersion.h"

namespace quillmar {
namespace {

char symbol(std::weak_ordering order)
{
    return order < 0 ? '<' : order > 0 ? '>' : '=';
}

struct ComparisonRow {
    const char* name;
    std::string a;
    std::string b;
    char expected;
};

class AppVersionCompareTest : public testing::TestWithParam<ComparisonRow> { };

TEST_P(AppVersionCompareTest, ComparesBothWays)
{
    const auto& row = GetParam();
    EXPECT_EQ(symbol(AppVersion::compare(row.a, row.b)), row.expected) << row.a << " vs " << row.b;
    char mirrored = row.expected == '<' ? '>' : row.expected == '>' ? '<' : '=';
    EXPECT_EQ(symbol(AppVersion::compare(row.b, row.a)), mirrored) << row.b << " vs " << row.a;
}

INSTANTIATE_TEST_SUITE_P(Rules, AppVersionCompareTest,
    testing::Values(
        ComparisonRow { "TenAfterNine", "1.10", "1.9", '>' },
        ComparisonRow { "MissingPartsAreZero", "2.0", "2.0.0", '=' },
        ComparisonRow { "LeadingVIsDropped", "2.0.0", "v2.0", '=' },
        ComparisonRow { "BetaNumbersByValue", "1.0b2", "1.0b10", '<' },
        ComparisonRow { "TrailingWordIsPreRelease", "1.0beta", "1.0", '<' },
        ComparisonRow { "WordPartIsPreRelease", "1.0.beta", "1.0", '<' },
        ComparisonRow { "ReleaseCandidateBeforeRelease", "1.0rc1", "1.0", '<' },
        ComparisonRow { "WordsAlphabetically", "alpha", "beta", '<' },
        ComparisonRow { "WordsIgnoreCase", "Alpha", "beta", '<' },
        ComparisonRow { "ExtraNumberPartIsNewer", "1.0-1", "1.0", '>' },
        ComparisonRow { "EmptyEqualsEmpty", "", "", '=' },
        ComparisonRow { "EmptyEqualsZeros", "", "0.0", '=' },
        ComparisonRow { "EmptyBeforeOne", "", "1", '<' },
        ComparisonRow { "FourZeroPartsEqual", "1.0", "1.0.0.0", '=' },
        ComparisonRow { "FourthPartCounts", "1.0.0.1", "1.0", '>' },
        ComparisonRow { "WordAfterTheNumbersIsPreRelease", "3.1 (build 44)", "3.1, 44", '<' },
        ComparisonRow { "CommaCutKeepsTheVersion", "3.1, 44", "3.1", '=' },
        ComparisonRow { "LettersIgnoreCase", "1.0RC1", "1.0rc1", '=' },
        ComparisonRow { "LeadingZerosIgnored", "1.007", "1.7", '=' },
        ComparisonRow { "ZeroEqualsNothing", "1.00", "1", '=' },
        ComparisonRow { "NumbersBeyondSixtyFourBits", "1.123456789012345678901234567890", "1.123456789012345678901234567889", '>' },
        ComparisonRow { "LongerNumberIsGreater", "99999999999999999999999", "100000000000000000000000", '<' },
        ComparisonRow { "NumberRunBeforeWordRun", "1.0a", "1.01", '<' },
        ComparisonRow { "TrailingNumberRunAgainstZero", "1.0a0", "1.0a", '=' },
        ComparisonRow { "TrailingNumberRunAboveZero", "1.0a1", "1.0a", '>' },
        ComparisonRow { "WordThenNumber", "1.0a", "1.0a.1", '<' },
        ComparisonRow { "NumberRunsInsideWords", "beta12rc", "beta9rc", '>' },
        ComparisonRow { "NumberAgainstWordStartingPart", "2", "b", '>' },
        ComparisonRow { "LetterStartingAgainstNumber", "1.a1", "1.0", '<' },
        ComparisonRow { "NumberStartingPartAgainstNumber", "1.1a", "1.1", '<' },
        ComparisonRow { "NumberStartingPartAboveSmaller", "1.2a", "1.1", '>' },
        ComparisonRow { "SeparatorsAreAllAlike", "1-2_3", "1.2.3", '=' },
        ComparisonRow { "WhiteSpaceTrimmed", " \t1.2\n", "1.2", '=' },
        ComparisonRow { "UnicodeSpaceTrimmed", "\u00a01.2\u2028", "1.2", '=' },
        ComparisonRow { "VersionWordKept", "version 2", "2", '<' },
        ComparisonRow { "CapitalVDropped", "V2", "2", '=' },
        ComparisonRow { "NonAsciiDigitsAreNumbers", "1.\u0663", "1.a", '>' },
        ComparisonRow { "NonAsciiLettersAreLetters", "1.0\u00e9", "1.0", '<' },
        ComparisonRow { "NonAsciiLettersIgnoreCase", "1.\u00c9", "1.\u00e9", '=' },
        ComparisonRow { "MalformedByteSeparates", "1\xff" "2", "1.2", '=' },
        ComparisonRow { "OnlySeparators", "...", "0", '=' },
        ComparisonRow { "OnlyMalformedBytes", "\xc0\xaf", "", '=' }),
    [](const auto& row) { return std::string(row.param.name); });

struct TextRow {
    const char* name;
    std::string input;
    std::string expected;
};

TEST(AppVersionTest, NormalizeTrimsCutsAtTheCommaAndDropsALeadingV)
{
    for (const auto& row : {
             TextRow { "trims", "  1.2 \n", "1.2" },
             TextRow { "cuts at the first comma", "2.1, build 7", "2.1" },
             TextRow { "cuts before trimming the rest", "2.1 ,7", "2.1 " },
             TextRow { "drops v before a number", "v1.2", "1.2" },
             TextRow { "drops V before a number", "V2", "2" },
             TextRow { "keeps the v of a word", "version", "version" },
             TextRow { "keeps a lone v", "v", "v" },
             TextRow { "keeps Version 2", "Version 2", "Version 2" },
             TextRow { "keeps v before a dot", "v.2", "v.2" },
             TextRow { "drops v before a non-ASCII digit", "v\u0663", "\u0663" },
             TextRow { "empty", "", "" },
             TextRow { "only a comma", ",5", "" },
         }) {
        EXPECT_EQ(AppVersion::normalize(row.input), row.expected) << row.name;
    }
}

TEST(AppVersionTest, PartsSplitAtEveryCharacterThatIsNeitherLetterNorNumber)
{
    struct Row {
        const char* name;
        std::string input;
        std::vector<std::string> expected;
    };
    for (const auto& row : {
             Row { "pre-release", "1.2-beta3", { "1", "2", "beta3" } },
             Row { "underscore", "2024.05_rc", { "2024", "05", "rc" } },
             Row { "empty pieces dropped", "..1..2..", { "1", "2" } },
             Row { "normalised first", "v1.2, 9", { "1", "2" } },
             Row { "nothing", "", {} },
             Row { "malformed bytes separate", "1\x80\xfe" "2", { "1", "2" } },
             Row { "unicode letters stay", "1.\u00e9t\u00e9", { "1", "\u00e9t\u00e9" } },
             Row { "symbols separate", "1\u20ac2+3", { "1", "2", "3" } },
         }) {
        EXPECT_EQ(AppVersion::parts(row.input), row.expected) << row.name;
    }
}

TEST(AppVersionTest, PlaceholderVersionsCarryNoInformation)
{
    struct Row {
        const char* name;
        std::string shortVersion;
        std::string build;
        bool expected;
    };
    for (const auto& row : {
             Row { "template 1.0 (1)", "1.0", "1", true },
             Row { "zeros", "0.0", "57", true },
             Row { "empty", "", "9", true },
             Row { "template with another build", "1.0", "2", false },
             Row { "template without a build", "1.0", "", true },
             Row { "template after normalising", " v1.0 ", " 1 ", true },
             Row { "three zeros", "0.0.0", "", true },
             Row { "leading zeros", "00.000", "3", true },
             Row { "no parts", "...", "3", true },
             Row { "letters end the zero test", "0.0a", "", false },
             Row { "1.0.0 is not the template", "1.0.0", "1", false },
             Row { "real version", "2.3", "1", false },
             Row { "non-ASCII zero is not an integer", "\u0660", "", false },
         }) {
        EXPECT_EQ(AppVersion::isPlaceholder(row.shortVersion, row.build), row.expected) << row.name;
    }
}

TEST(AppVersionTest, StableNumericIsAPlainDottedNumber)
{
    struct Row {
        const char* name;
        std::string input;
        bool expected;
    };
    for (const auto& row : {
             Row { "dotted", "1.2.3", true },
             Row { "single number", "7", true },
             Row { "normalised first", " v1.2, beta", true },
             Row { "pre-release", "1.2.3-beta", false },
             Row { "double dot", "1..2", false },
             Row { "leading dot", ".1", false },
             Row { "trailing dot", "1.", false },
             Row { "empty", "", false },
             Row { "letters", "1.2b", false },
             Row { "space inside", "1. 2", false },
             Row { "non-ASCII digits are numbers", "\u0661.\u0662", true },
             Row { "malformed byte", "1.\xff", false },
         }) {
        EXPECT_EQ(AppVersion::isStableNumeric(row.input), row.expected) << row.name;
    }
}

// Random strings over an alphabet that favours the characters versions are made of, with non-ASCII
// letters and digits, symbols and broken UTF-8 among them.
std::string randomVersion(std::mt19937& random)
{
    static const std::vector<std::string> pieces { "0", "1", "2", "9", "00", "10", ".", "-", "_", ",", " ", "v", "V", "a",
        "b", "B", "rc", "beta", "\u00e9", "\u00c9", "\u0663", "\u00bd", "\u2160", "\u4e00", "\u0301", "\xff", "\xc3", "\xe2\x82",
        "+", "\t", "\u00a0" };
    std::uniform_int_distribution<std::size_t> length(0, 12);
    std::uniform_int_distribution<std::size_t> pick(0, pieces.size() - 1);
    std::string text;
    for (auto count = length(random); count > 0; --count)
        text += pieces[pick(random)];
    return text;
}

TEST(AppVersionTest, CompareIsTotalAntisymmetricAndReflexive)
{
    std::mt19937 random(20240517);
    for (int round = 0; round < 20000; ++round) {
        auto a = randomVersion(random);
        auto b = randomVersion(random);
        auto forward = AppVersion::compare(a, b);
        auto backward = AppVersion::compare(b, a);
        ASSERT_EQ(symbol(forward), symbol(0 <=> backward)) << '"' << a << "\" vs \"" << b << '"';
        ASSERT_EQ(symbol(AppVersion::compare(a, a)), '=') << '"' << a << '"';
    }
}

TEST(AppVersionTest, CompareIsTransitiveOnSortedSamples)
{
    // Sorting with a comparator that is not a strict weak order would misplace elements; check every pair
    // of the sorted list agrees with its positions.
    std::mt19937 random(7);
    std::vector<std::string> versions;
    for (int index = 0; index < 300; ++index)
        versions.push_back(randomVersion(random));
    std::stable_sort(versions.begin(), versions.end(),
        [](const std::string& a, const std::string& b) { return AppVersion::compare(a, b) < 0; });
    for (std::size_t i = 0; i < versions.size(); ++i) {
        for (std::size_t j = i + 1; j < versions.size(); ++j)
            ASSERT_FALSE(AppVersion::compare(versions[j], versions[i]) < 0) << versions[i] << " / " << versions[j];
    }
}

} // namespace
} // namespace quillmar
