#include <gtest/gtest.h>

#include "core/snippets/SnippetMatcher.h"

namespace quillmar {
namespace {

TextSnippet snippet(std::string trigger, bool immediate = false, bool ignoresCase = false)
{
    TextSnippet made;
    made.id = trigger;
    made.trigger = std::move(trigger);
    made.text = "expanded " + made.trigger;
    made.expandsImmediately = immediate;
    made.ignoresCase = ignoresCase;
    return made;
}

struct MatchRow {
    const char* name;
    std::vector<TextSnippet> snippets;
    const char* buffer;
    std::optional<std::string> fired; // the trigger
    bool terminated;
};

class Matching : public testing::TestWithParam<MatchRow> { };

TEST_P(Matching, FiresTheRightSnippet)
{
    const auto& row = GetParam();
    auto found = SnippetMatcher::match(std::string_view(row.buffer), row.snippets);
    ASSERT_EQ(found.has_value(), row.fired.has_value());
    if (!found)
        return;
    EXPECT_EQ(row.snippets[found->index].trigger, *row.fired);
    EXPECT_EQ(found->terminatedBySpace, row.terminated);
}

INSTANTIATE_TEST_SUITE_P(Rules, Matching,
    testing::Values(
        MatchRow { "ImmediateAtTheEnd", { snippet(";sig", true) }, "hello ;sig", ";sig", false },
        MatchRow { "ImmediateAloneInTheBuffer", { snippet(";sig", true) }, ";sig", ";sig", false },
        MatchRow { "ImmediateNotAfterALetter", { snippet(";sig", true) }, "x;sig", std::nullopt, false },
        MatchRow { "ImmediateAfterPunctuation", { snippet(";sig", true) }, "(;sig", ";sig", false },
        MatchRow { "ImmediateDoesNotFireAgainOnTheSpace", { snippet(";sig", true) }, ";sig ", std::nullopt, false },
        MatchRow { "WaitingNeedsTheSpace", { snippet(";sig") }, "a ;sig", std::nullopt, false },
        MatchRow { "WaitingFiresOnTheSpace", { snippet(";sig") }, "a ;sig ", ";sig", true },
        MatchRow { "WaitingNotAfterALetter", { snippet(";sig") }, "x;sig ", std::nullopt, false },
        MatchRow { "WaitingAfterTab", { snippet("addr") }, "\taddr ", "addr", true },
        MatchRow { "OnlyOneSpaceIsSetAside", { snippet(";sig") }, ";sig  ", std::nullopt, false },
        MatchRow { "ImmediateShortBeatsWaitingLong", { snippet(";s", true), snippet(";sig") }, ";s", ";s", false },
        MatchRow { "LongestWaitingWins", { snippet(";s"), snippet(";sig") }, ";sig ", ";sig", true },
        MatchRow { "LongestWinsWhateverTheOrder", { snippet("sig"), snippet(";sig") }, ";sig ", ";sig", true },
        MatchRow { "ShorterFiresWhenLongerCannot", { snippet("sig"), snippet("x;sig") }, "ax;sig ", "sig", true },
        MatchRow { "FirstOfEqualLength", { snippet(";ab"), snippet(";AB", false, true) }, ";ab ", ";ab", true },
        MatchRow { "CaseMattersByDefault", { snippet(";Sig") }, ";sig ", std::nullopt, false },
        MatchRow { "IgnoredCase", { snippet(";Sig", false, true) }, ";SIG ", ";Sig", true },
        MatchRow { "IgnoredCaseBeyondAscii", { snippet(";ÉTÉ", true, true) }, " ;été", ";ÉTÉ", false },
        MatchRow { "NonAsciiTrigger", { snippet("→x", true) }, "a →x", "→x", false },
        MatchRow { "EmptyTriggerNeverFires", { snippet("", true) }, "anything", std::nullopt, false },
        MatchRow { "EmptyBuffer", { snippet(";sig", true) }, "", std::nullopt, false }),
    [](const testing::TestParamInfo<MatchRow>& row) { return row.param.name; });

struct ProblemRow {
    const char* name;
    std::string trigger;
    std::optional<TriggerProblem> problem;
};

class TriggerProblems : public testing::TestWithParam<ProblemRow> { };

TEST_P(TriggerProblems, AreFound)
{
    std::vector<TextSnippet> library { snippet(";taken"), snippet(";mine") };
    EXPECT_EQ(SnippetMatcher::problem(GetParam().trigger, ";mine", library), GetParam().problem);
}

INSTANTIATE_TEST_SUITE_P(Editor, TriggerProblems,
    testing::Values(
        ProblemRow { "Fine", ";new", std::nullopt },
        ProblemRow { "Empty", "", TriggerProblem::empty },
        ProblemRow { "FortyCharacters", std::string(40, 'a'), std::nullopt },
        ProblemRow { "FortyOneCharacters", std::string(41, 'a'), TriggerProblem::tooLong },
        ProblemRow { "FortyEmojiAreForty", [] { std::string s; for (int i = 0; i < 40; ++i) s += "👍🏽"; return s; }(), std::nullopt },
        ProblemRow { "Space", ";a b", TriggerProblem::whitespace },
        ProblemRow { "LineBreak", ";a\nb", TriggerProblem::whitespace },
        ProblemRow { "NoBreakSpace", ";a\u00A0b", TriggerProblem::whitespace },
        ProblemRow { "Duplicate", ";taken", TriggerProblem::duplicate },
        ProblemRow { "ItsOwnTrigger", ";mine", std::nullopt }),
    [](const testing::TestParamInfo<ProblemRow>& row) { return row.param.name; });

TEST(TriggerProblem, Messages)
{
    EXPECT_EQ(message(TriggerProblem::empty), "Type a trigger.");
    EXPECT_EQ(message(TriggerProblem::tooLong), "Keep triggers to 40 characters or fewer.");
    EXPECT_EQ(message(TriggerProblem::whitespace), "Triggers can't contain spaces or line breaks.");
    EXPECT_EQ(message(TriggerProblem::duplicate), "Another snippet already uses this trigger.");
}

} // namespace
} // namespace quillmar
