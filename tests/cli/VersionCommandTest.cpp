#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/cli/CliHarness.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

using VersionCommandTest = CliTest;

// The version rules are the core's own tests; here, each question and each answer it can print.
TEST_F(VersionCommandTest, AnswersOneQuestion)
{
    struct Row {
        std::vector<std::string> words;
        const char* out;
    };
    for (const auto& row : {
             Row { { "version", "compare", "1.10", "1.9" }, ">\n" },
             Row { { "version", "compare", "v2.0", "2.0.0" }, "=\n" },
             Row { { "version", "compare", "", "1" }, "<\n" },
             Row { { "version", "verdict", "5.0-1300", "5.0", "1234" }, "update\n" },
             Row { { "version", "verdict", "3.4.1.2207", "3.4.1", "2207" }, "current\n" },
             Row { { "version", "verdict", "latest", "1.0", "1" }, "uncomparable\n" },
             Row { { "version", "placeholder", "1.0", "1" }, "true\n" },
             Row { { "version", "placeholder", "1.0", "2" }, "false\n" },
             Row { { "version", "stable", "1.2.3" }, "true\n" },
             Row { { "version", "stable", "1.2.3-beta" }, "false\n" },
         }) {
        auto result = run(row.words);
        EXPECT_EQ(result.code, 0) << row.words[1] << ' ' << row.words[2];
        EXPECT_EQ(result.out, row.out) << row.words[1] << ' ' << row.words[2];
        EXPECT_EQ(result.err, "");
    }
}

TEST_F(VersionCommandTest, BatchReadsTabSeparatedFields)
{
    auto compare = run({ "version", "compare", "--batch" }, "1.10\t1.9\n\t\n1.0\n1\t2\t3\n\t1\r\n");
    EXPECT_EQ(compare.code, 0);
    EXPECT_EQ(compare.out, ">\n=\nerror: expected 2 tab-separated fields, got 1\nerror: expected 2 tab-separated fields, got 3\n<\n");

    auto verdict = run({ "version", "verdict", "--batch" }, "5.0,1234\t5.0\t1234\n5.0-1300\t5.0\t12a\n");
    EXPECT_EQ(verdict.out, "current\ncurrent\n");

    auto stable = run({ "version", "stable", "--batch" }, "1.2\n\n1.2\tx\n");
    EXPECT_EQ(stable.out, "true\nfalse\nerror: expected 1 tab-separated field, got 2\n");

    auto placeholder = run({ "version", "placeholder", "--batch" }, "0.0\t57\n");
    EXPECT_EQ(placeholder.out, "true\n");
}

TEST_F(VersionCommandTest, WrongArgumentsAreUsageErrors)
{
    for (const auto& words : std::vector<std::vector<std::string>> {
             { "version", "compare", "1.0" },
             { "version", "verdict", "1", "2" },
             { "version", "stable", "1", "2" },
             { "version", "compare", "--batch", "1", "2" },
             { "version" },
         }) {
        auto result = run(words);
        EXPECT_EQ(result.code, 2) << words.size();
        EXPECT_EQ(result.out, "");
        EXPECT_NE(result.err, "");
    }
}

} // namespace
} // namespace quillmar
