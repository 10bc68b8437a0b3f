#include <gtest/gtest.h>

#include "core/commandbar/CommandRankerRequest.h"

namespace quillmar {
namespace {

TEST(CommandRankerRequestTest, ReadsCandidatesWithTheirDefaults)
{
    auto request = CommandRankerRequest::fromJson(nlohmann::json::parse(R"({
        "candidates": [
            {"id": "mail", "source": "apps", "title": "Mail"},
            {"id": "doc", "source": "files", "title": "notes.txt", "subtitle": "~/Documents", "keywords": ["memo"],
             "boost": 0.1, "date": 1700000000, "learns": false}
        ],
        "answers": [{"id": "calc", "title": "= 4"}],
        "fallbacks": [{"id": "web", "title": "Search"}]
    })"));
    ASSERT_TRUE(request.ok()) << request.error().message;
    ASSERT_EQ(request->candidates.size(), 2u);
    const auto& mail = request->candidates[0];
    EXPECT_EQ(mail.source, CommandSource::apps);
    EXPECT_EQ(mail.boost, 0);
    EXPECT_TRUE(mail.learns);
    EXPECT_EQ(mail.date, std::nullopt);
    const auto& doc = request->candidates[1];
    EXPECT_EQ(doc.subtitle, "~/Documents");
    EXPECT_EQ(doc.keywords, (std::vector<std::string> { "memo" }));
    EXPECT_EQ(doc.boost, 0.1);
    EXPECT_EQ(doc.date, WallTime(std::chrono::seconds(1'700'000'000)));
    EXPECT_FALSE(doc.learns);
    EXPECT_EQ(request->answers.at(0).source, CommandSource::answer);
    EXPECT_EQ(request->fallbacks.at(0).source, CommandSource::web);
    EXPECT_EQ(request->learning, std::nullopt);
}

TEST(CommandRankerRequestTest, EveryKeyIsOptional)
{
    auto request = CommandRankerRequest::fromJson(nlohmann::json::object());
    ASSERT_TRUE(request.ok());
    EXPECT_TRUE(request->candidates.empty());
}

TEST(CommandRankerRequestTest, LearningWithoutASecretGetsZeroBytes)
{
    auto request = CommandRankerRequest::fromJson(
        { { "learning", { { "entries", { { "mail", { { "weight", 2 }, { "updated", 1.7e9 }, { "uses", 2 } } } } } } } });
    ASSERT_TRUE(request.ok()) << request.error().message;
    ASSERT_TRUE(request->learning.has_value());
    EXPECT_EQ(request->learning->secret, CommandLearning::Secret {});
    EXPECT_EQ(request->learning->entries.at("mail").weight, 2);
}

struct BadRow {
    const char* name;
    const char* json;
    const char* message;
};

class BadRequestTest : public testing::TestWithParam<BadRow> { };

TEST_P(BadRequestTest, SaysWhatIsWrong)
{
    auto request = CommandRankerRequest::fromJson(nlohmann::json::parse(GetParam().json));
    ASSERT_FALSE(request.ok());
    EXPECT_EQ(request.error().message, GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(Inputs, BadRequestTest,
    testing::Values(BadRow { "NotAnObject", "[1]", "The input is not a JSON object." },
        BadRow { "ListNotAnArray", R"({"candidates": {}})", "\"candidates\" is not an array." },
        BadRow { "ItemNotAnObject", R"({"answers": [3]})", "Item 1 of \"answers\" is not an object." },
        BadRow { "MissingId", R"({"candidates": [{"id": "a", "source": "apps", "title": "A"}, {"source": "apps", "title": "B"}]})",
            "Item 2 of \"candidates\" has no \"id\"." },
        BadRow { "MissingSource", R"({"candidates": [{"id": "a", "title": "A"}]})", "Item 1 of \"candidates\" has no \"source\"." },
        BadRow { "UnknownSource", R"({"candidates": [{"id": "a", "source": "app", "title": "A"}]})",
            "Item 1 of \"candidates\" has an unknown \"source\" \"app\"." },
        BadRow { "TitleNotAString", R"({"fallbacks": [{"id": "a", "title": 5}]})",
            "Item 1 of \"fallbacks\" has a \"title\" that is not a string." },
        BadRow { "KeywordNotAString", R"({"candidates": [{"id": "a", "source": "apps", "title": "A", "keywords": ["x", 1]}]})",
            "Item 1 of \"candidates\" has \"keywords\" that are not an array of strings." },
        BadRow { "BoostNotANumber", R"({"candidates": [{"id": "a", "source": "apps", "title": "A", "boost": "1"}]})",
            "Item 1 of \"candidates\" has a \"boost\" that is not a number." },
        BadRow { "DateOutOfRange", R"({"candidates": [{"id": "a", "source": "apps", "title": "A", "date": 1e300}]})",
            "Item 1 of \"candidates\" has a \"date\" out of range." },
        BadRow { "LearnsNotABoolean", R"({"candidates": [{"id": "a", "source": "apps", "title": "A", "learns": 1}]})",
            "Item 1 of \"candidates\" has a \"learns\" that is not true or false." },
        BadRow { "LearningNotAnObject", R"({"learning": []})", "\"learning\" is not a learning book." },
        BadRow { "LearningWithABadSecret", R"({"learning": {"secret": "abc"}})", "\"learning\" is not a learning book." }),
    [](const auto& row) { return std::string(row.param.name); });

TEST(CommandRankerRequestTest, WritesSectionsWithIdsScoresAndMatches)
{
    auto mail = std::make_shared<const CommandCandidate>(CommandCandidate { .id = "mail", .title = "Mail" });
    std::vector<CommandSection> sections { { "top", "Top hit", { { mail, 1.25, { 0, 1 } } } } };
    EXPECT_EQ(CommandRankerRequest::sectionsJson(sections).dump(),
        R"({"sections":[{"id":"top","results":[{"id":"mail","matches":[0,1],"score":1.25}],"title":"Top hit"}]})");
    EXPECT_EQ(CommandRankerRequest::sectionsJson({}).dump(), R"({"sections":[]})");
}

} // namespace
} // namespace quillmar
