#include <gtest/gtest.h>

#include <fstream>

#include <nlohmann/json.hpp>

#include "core/base/Files.h"
#include "core/capture/PngCodec.h"
#include "tests/capture/GeneratedPage.h"
#include "tests/cli/CliHarness.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

using testing_support::GeneratedPage;

class StitchCommandTest : public testing::Test {
protected:
    // Writes the frame of the page at `top` as a PNG and returns its path.
    std::string frameFile(int top)
    {
        auto path = m_folder.path() / ("frame-" + std::to_string(m_count++) + ".png");
        EXPECT_TRUE(writeFileAtomically(path, *encodePng(m_page.frame(top, 200))).ok());
        return path.string();
    }

    std::string brokenFile()
    {
        auto path = m_folder.path() / ("broken-" + std::to_string(m_count++) + ".png");
        EXPECT_TRUE(writeFileAtomically(path, "\x89PNG\r\n\x1a\n but then nothing").ok());
        return path.string();
    }

    std::string output() const { return (m_folder.path() / "tall.png").string(); }

    CommandRun stitch(std::vector<std::string> frames, bool json = true)
    {
        std::vector<std::string> words { "stitch", "-o", output() };
        words.insert(words.end(), frames.begin(), frames.end());
        if (json)
            words.push_back("--json");
        return runQuillmar(m_folder.path(), words);
    }

    Bitmap written() const
    {
        auto bytes = readFile(output());
        EXPECT_TRUE(bytes.ok() && bytes->has_value());
        return decodePng(bytes.ok() && bytes->has_value() ? **bytes : std::string()).value();
    }

    TemporaryFolder m_folder;
    GeneratedPage m_page { 160, 1200, 41 };
    int m_count = 0;
};

TEST_F(StitchCommandTest, StitchesFramesInOrderAndPrintsEachStatus)
{
    auto run = stitch({ frameFile(0), frameFile(0), frameFile(70), frameFile(150), frameFile(700) });
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(nlohmann::json::parse(run.out),
        (nlohmann::json { { "statuses", { 0, 1, 2, 2, 3 } }, { "width", 160 }, { "height", 350 } }));
    EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 1);
    EXPECT_TRUE(written().samePixels(m_page.rows(0, 350)));
}

TEST_F(StitchCommandTest, TextOutputNamesEachFrameThenTheSize)
{
    auto first = frameFile(0);
    auto second = frameFile(40);
    auto run = stitch({ first, second }, /*json=*/false);
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, "0 " + first + "\n2 " + second + "\n160x240\n");
}

TEST_F(StitchCommandTest, UnreadableFramesGiveStatusOneAndTheRunGoesOn)
{
    auto missing = (m_folder.path() / "missing.png").string();
    auto broken = brokenFile();
    auto run = stitch({ broken, frameFile(0), missing, frameFile(60) });
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(nlohmann::json::parse(run.out)["statuses"], (nlohmann::json { 1, 0, 1, 2 }));
    EXPECT_EQ(run.err, "Couldn't read " + broken + ": it isn't a readable PNG image.\nCouldn't read " + missing
            + ": no such file.\n");
    EXPECT_TRUE(written().samePixels(m_page.rows(0, 260)));
}

TEST_F(StitchCommandTest, NothingUsableIsARefusal)
{
    auto run = stitch({ brokenFile(), (m_folder.path() / "missing.png").string() });
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find("Nothing was captured\n"), std::string::npos) << run.err;
    EXPECT_FALSE(std::filesystem::exists(output()));
}

TEST_F(StitchCommandTest, UnwritableOutputIsARefusal)
{
    std::filesystem::create_directories(output()); // a folder where the file should go
    auto run = stitch({ frameFile(0) });
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find("The stitched image could not be written to " + output() + "."), std::string::npos) << run.err;
}

// Without -o; without frames is a row of the user-message test.
TEST_F(StitchCommandTest, OutputIsRequired)
{
    EXPECT_EQ(runQuillmar(m_folder.path(), { "stitch", frameFile(0) }).code, 2);
}

} // namespace
} // namespace quillmar
