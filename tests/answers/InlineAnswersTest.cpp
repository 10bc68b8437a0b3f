#include <gtest/gtest.h>

#include "core/answers/InlineAnswers.h"
#include "core/commandbar/CommandRanker.h"

namespace quillmar {
namespace {

const AnswerContext berlinInGerman { WallTime(std::chrono::seconds(1772884800)), "Europe/Berlin", "de_DE" };

TEST(InlineAnswers, CalculatorShowsTheLocalesGroupingAndCopiesPlainDigits)
{
    InlineAnswers answers;
    auto found = answers.answers("1234*1000.5", berlinInGerman);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0], (InlineAnswer { InlineAnswerKind::calculator, "1.234.617", "1234*1000.5", "1234617", "equal.circle" }));

    auto candidates = answers.candidates(" 2^10 ", berlinInGerman);
    ASSERT_EQ(candidates.size(), 1u);
    const auto& candidate = candidates[0];
    EXPECT_EQ(candidate.id, "answer.calculator");
    EXPECT_EQ(candidate.source, CommandSource::answer);
    EXPECT_EQ(candidate.title, "1.024");
    EXPECT_EQ(candidate.subtitle, "2^10");
    EXPECT_EQ(candidate.payload, (CommandPayload { CommandPayload::Answer { "1024" } }));
    EXPECT_EQ(candidate.icon, CommandIcon::symbol("equal.circle"));
    EXPECT_FALSE(candidate.learns);
}

TEST(InlineAnswers, EachAnswererAnswersItsOwnQueries)
{
    struct Row {
        const char* query;
        std::optional<InlineAnswerKind> kind;
        const char* title;
        const char* subtitle;
    };
    InlineAnswers answers;
    for (const auto& row : {
             Row { "5 km in mi", InlineAnswerKind::units, "3.106855961 mi", "5 km in miles" },
             Row { "100 °C", InlineAnswerKind::units, "212 °F", "100 °C in degrees Fahrenheit" },
             Row { "time in tokyo", InlineAnswerKind::timeZones, "9:00 PM in Tokyo (GMT+9)", "Asia/Tokyo" },
             Row { "12 34", std::nullopt, "", "" },
             Row { "42", std::nullopt, "", "" },
             Row { "12:30", std::nullopt, "", "" },
             Row { "mail", std::nullopt, "", "" },
             Row { "", std::nullopt, "", "" },
         }) {
        auto found = answers.first(row.query, berlinInGerman);
        ASSERT_EQ(found.has_value(), row.kind.has_value()) << row.query;
        if (!found)
            continue;
        EXPECT_EQ(found->kind, *row.kind) << row.query;
        EXPECT_EQ(found->title, row.title) << row.query;
        EXPECT_EQ(found->subtitle, row.subtitle) << row.query;
        EXPECT_EQ(found->copyText, found->title) << row.query;
        EXPECT_EQ(answers.answers(row.query, berlinInGerman).size(), 1u) << row.query;
    }
}

TEST(InlineAnswers, AnswerLeadsTheRankedSectionsInScopeAll)
{
    InlineAnswers answers;
    CommandCandidate app;
    app.id = "app.calculator";
    app.source = CommandSource::apps;
    app.title = "Calculator";

    CommandRanker ranker;
    CommandRanker::Input input;
    input.query = "5 km in mi";
    input.candidates = makeCandidateList({ app });
    input.answers = answers.candidates(input.query, berlinInGerman);
    input.now = berlinInGerman.now;
    auto sections = ranker.rank(input);
    ASSERT_FALSE(sections.empty());
    ASSERT_FALSE(sections.front().results.empty());
    EXPECT_EQ(sections.front().results.front().candidate->id, "answer.units");
    EXPECT_EQ(sections.front().results.front().score, 10.0);
}

} // namespace
} // namespace quillmar
