#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "tests/cli/CliHarness.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

// 2026-03-07 12:00 UTC, the Saturday before the United States move their clocks forward.
const std::string saturday = "1772884800";
// 2026-03-09 12:00 UTC, the Monday after.
const std::string monday = "1773057600";

using AnswerCommandsTest = CliTest;

TEST_F(AnswerCommandsTest, CalcPrintsThePlainNumberOrNothing)
{
    struct Row {
        std::vector<std::string> words;
        int code;
        const char* out;
    };
    for (const auto& row : {
             Row { { "calc", "2+3*4" }, 0, "14\n" },
             Row { { "calc", "--", "-pi*2" }, 0, "-6.283185307\n" },
             Row { { "calc", "42" }, 1, "" },
             Row { { "calc", std::string(100000, '(') }, 1, "" },
         }) {
        auto result = run(row.words);
        EXPECT_EQ(result.code, row.code) << row.words.back().substr(0, 10);
        EXPECT_EQ(result.out, row.out) << row.words.back().substr(0, 10);
        EXPECT_EQ(result.err, "") << row.words.back().substr(0, 10);
    }
}


TEST_F(AnswerCommandsTest, ConvertPrintsTheTextOrJson)
{
    auto text = run({ "convert", "5", "km", "in", "mi" });
    EXPECT_EQ(text.code, 0);
    EXPECT_EQ(text.out, "3.106855961 mi\n");

    auto json = run({ "convert", "5 km in mi", "--json" });
    ASSERT_EQ(json.code, 0);
    EXPECT_EQ(nlohmann::json::parse(json.out), (nlohmann::json { { "value", 3.106855961 }, { "unit", "mi" },
                                                   { "text", "3.106855961 mi" }, { "from", { { "value", 5 }, { "unit", "km" } } } }));
    EXPECT_EQ(json.out.find('\n'), json.out.size() - 1) << "one line";
    EXPECT_NE(json.out.find("\"value\":5}"), std::string::npos) << "a whole number is written without a fraction";

    auto mismatch = run({ "convert", "5 kg in km", "--json" });
    EXPECT_EQ(mismatch.code, 1);
    EXPECT_EQ(mismatch.out, "");
}

TEST_F(AnswerCommandsTest, TzAnswersForTheGivenMomentAndZone)
{
    auto before = run({ "tz", "3pm", "pst", "in", "tokyo", "--now", saturday, "--local", "Europe/Berlin", "--json" });
    ASSERT_EQ(before.code, 0) << before.err;
    EXPECT_EQ(nlohmann::json::parse(before.out),
        (nlohmann::json { { "text", "3:00 PM in Los Angeles (PST) = 8:00 AM tomorrow in Tokyo (GMT+9)" },
            { "zone", "Asia/Tokyo" }, { "time", "08:00" }, { "date", "2026-03-08" } }));

    auto after = run({ "tz", "3pm pst in tokyo", "--now", monday, "--local", "Europe/Berlin" });
    EXPECT_EQ(after.code, 0);
    EXPECT_EQ(after.out, "3:00 PM in Los Angeles (PDT) = 7:00 AM tomorrow in Tokyo (GMT+9)\n");

    auto unknown = run({ "tz", "time in atlantis", "--now", saturday });
    EXPECT_EQ(unknown.code, 1);
    EXPECT_EQ(unknown.out, "");
}

TEST_F(AnswerCommandsTest, AnswerShowsWhatTheBarWouldShow)
{
    struct Row {
        std::vector<std::string> words;
        int code;
        const char* out;
    };
    for (const auto& row : {
             Row { { "answer", "2^20", "--locale", "de_DE" }, 0, "1.048.576\n" },
             Row { { "answer", "2^20", "--locale", "en_US" }, 0, "1,048,576\n" },
             Row { { "answer", "time", "in", "tokyo", "--now", saturday, "--local", "UTC" }, 0, "9:00 PM in Tokyo (GMT+9)\n" },
             Row { { "answer", "safari" }, 1, "" },
         }) {
        auto result = run(row.words);
        EXPECT_EQ(result.code, row.code) << row.words[1];
        EXPECT_EQ(result.out, row.out) << row.words[1];
    }
    auto json = run({ "answer", "2^10", "--locale", "en_US", "--json" });
    EXPECT_EQ(nlohmann::json::parse(json.out),
        (nlohmann::json { { "kind", "calculator" }, { "title", "1,024" }, { "subtitle", "2^10" }, { "copy", "1024" } }));
}

TEST_F(AnswerCommandsTest, UsageErrorsExitTwo)
{
    struct Row {
        std::vector<std::string> words;
        const char* saying;
    };
    for (const auto& row : {
             Row { { "calc" }, "Give a query" },
             Row { { "convert" }, "Give a query" },
             Row { { "tz", "tokyo", "--now", "1e300" }, "out of range" },
             Row { { "tz", "tokyo", "--now", "soon" }, "quillmar --help" },
         }) {
        auto result = run(row.words);
        EXPECT_EQ(result.code, 2) << row.words.back();
        EXPECT_EQ(result.out, "") << row.words.back();
        EXPECT_NE(result.err.find(row.saying), std::string::npos) << result.err;
    }
}

// The real binary, fed on standard input: one line out for every line in, empty where there is no answer.
TEST_F(AnswerCommandsTest, TheBinaryAnswersABatchLineByLine)
{
    auto result = runQuillmarBinary(m_folder.path(), { "calc", "--batch" }, "2+2\n42\n1,000,000/4\n\n(((\r\n2^-1");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, "4\n\n250000\n\n\n0.5\n");
}

} // namespace
} // namespace quillmar
