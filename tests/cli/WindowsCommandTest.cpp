#include <gtest/gtest.h>

#include <string>

#include <nlohmann/json.hpp>

#include "tests/cli/CliHarness.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

class WindowsCommandTest : public testing::Test {
protected:
    CommandRun layout(std::vector<std::string> words)
    {
        words.insert(words.begin(), "layout");
        return runQuillmar(m_folder.path(), words);
    }
    TemporaryFolder m_folder;
};

TEST_F(WindowsCommandTest, PrintsTheFrameWithoutNeedlessDecimals)
{
    struct Row {
        const char* name;
        std::vector<std::string> words;
        const char* expected;
    };
    const Row rows[] = {
        { "HalfWithAGap", { "leftHalf", "--area", "0,0,1000,800", "--gap", "10" }, "10 10 485 780\n" },
        { "RightHalfWithAGap", { "rightHalf", "--area", "0,0,1000,800", "--gap", "10" }, "505 10 485 780\n" },
        { "ThirdsOfAnOddWidth", { "firstThird", "--area", "0,0,1190,900" }, "0 0 396.6666666666667 900\n" },
        { "CenterUsesTheCurrentSize", { "center", "--area", "0,0,1200,900", "--current", "7,7,300,200" },
            "450 350 300 200\n" },
        { "CenterWithoutACurrentFrameFillsTheArea", { "center", "--area", "-1920,0,1920,1080" }, "-1920 0 1920 1080\n" },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        auto run = layout(row.words);
        EXPECT_EQ(run.code, 0) << run.err;
        EXPECT_EQ(run.out, row.expected);
    }
}

TEST_F(WindowsCommandTest, PrintsOneLineOfJson)
{
    auto run = layout({ "almostMaximize", "--area", "0,0,1000,800", "--json" });
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out.find('\n'), run.out.size() - 1);
    auto json = nlohmann::json::parse(run.out);
    EXPECT_EQ(json, (nlohmann::json { { "x", 50.0 }, { "y", 40.0 }, { "width", 900.0 }, { "height", 720.0 } }));
}

TEST_F(WindowsCommandTest, RefusesBadInputWithAUsageError)
{
    struct Row {
        const char* name;
        std::vector<std::string> words;
        const char* message;
    };
    const Row rows[] = {
        { "UnknownLayout", { "leftHalves", "--area", "0,0,10,10" }, "leftHalf, rightHalf, topHalf" },
        { "ThreeNumbers", { "leftHalf", "--area", "0,0,10" }, "The area must be four numbers" },
        { "FiveNumbers", { "leftHalf", "--area", "0,0,10,10,10" }, "The area must be four numbers" },
        { "NotANumber", { "leftHalf", "--area", "0,0,ten,10" }, "The area must be four numbers" },
        { "NegativeWidth", { "leftHalf", "--area", "0,0,-10,10" }, "The area must be four numbers" },
        { "BadCurrent", { "center", "--area", "0,0,10,10", "--current", "1;2;3;4" }, "The current frame must be" },
        { "NegativeGap", { "leftHalf", "--area", "0,0,10,10", "--gap", "-1" }, "The gap must be" },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        auto run = layout(row.words);
        EXPECT_EQ(run.code, 2);
        EXPECT_TRUE(run.out.empty());
        EXPECT_NE(run.err.find(row.message), std::string::npos) << run.err;
    }
    auto unknown = layout({ "leftHalves", "--area", "0,0,10,10" });
    EXPECT_NE(unknown.err.find("center"), std::string::npos); // all sixteen are listed
    EXPECT_NE(unknown.err.find("lastTwoThirds"), std::string::npos);
}

} // namespace
} // namespace quillmar
