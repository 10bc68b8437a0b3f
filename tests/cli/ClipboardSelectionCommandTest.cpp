#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "tests/platform/linux/support/XServer.h"

namespace quillmar {
namespace {

using testing::ChildProcess;
constexpr auto deadline = &ChildProcess::deadline;

class ClipboardSelectionCommandTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_server = testing::sharedXServer();
        ASSERT_NE(m_server, nullptr);
        if (!testing::isInstalled("xclip"))
            GTEST_FAIL() << "xclip isn't installed: run scripts/install-deps (package xclip).";
        m_folder = std::filesystem::temp_directory_path() / ("quillmar-clipboard-cli-" + std::to_string(::getpid()));
        std::filesystem::create_directories(m_folder);
    }
    void TearDown() override { std::filesystem::remove_all(m_folder); }

    // The binary against the test's X server, with settings of its own.
    std::optional<ChildProcess> quillmar(std::vector<std::string> words)
    {
        words.insert(words.begin(), QUILLMAR_BINARY);
        return ChildProcess::start(words, { m_server->environment(), "XDG_CONFIG_HOME=" + m_folder.string() });
    }

    void copyWithXclip(const std::string& text)
    {
        auto file = m_folder / "copied";
        std::ofstream(file) << text;
        ASSERT_TRUE(m_server->run({ "xclip", "-selection", "clipboard", "-i", file.string() }));
    }

    testing::XServer* m_server = nullptr;
    std::filesystem::path m_folder;
};

TEST_F(ClipboardSelectionCommandTest, ReadPrintsWhatTheHistoryWouldRecord)
{
    copyWithXclip("copied by another client");
    // xclip takes the clipboard in a child of its own after it exits: read until its text is there.
    std::optional<std::string> line;
    for (auto end = deadline(); std::chrono::steady_clock::now() < end;) {
        auto child = quillmar({ "clipboard", "read", "--json" });
        ASSERT_TRUE(child);
        line = child->readLine(deadline());
        EXPECT_EQ(child->wait(deadline()), 0);
        if (line && line->find("another client") != std::string::npos)
            break;
    }
    EXPECT_EQ(line, R"({"types":["public.utf8-plain-text"],"text":"copied by another client","filePaths":[],)"
                    R"("image":null,"skipped":null})");
}

TEST_F(ClipboardSelectionCommandTest, CopyHoldsTheTextUntilAnotherClientCopies)
{
    auto copy = quillmar({ "clipboard", "copy", "from the command line" });
    ASSERT_TRUE(copy);
    ASSERT_EQ(copy->readErrorLine(deadline()), "On the clipboard until something else is copied.");
    // xclip ends the text without a newline: echo adds the one readLine waits for.
    auto pasted = ChildProcess::start({ "sh", "-c", "xclip -selection clipboard -o && echo" }, { m_server->environment() });
    ASSERT_TRUE(pasted);
    EXPECT_EQ(pasted->readLine(deadline()), "from the command line");
    EXPECT_EQ(pasted->wait(deadline()), 0);

    copyWithXclip("something else");
    EXPECT_EQ(copy->wait(deadline()), 0);
}

TEST(ClipboardSelectionCommand, SaysWhyOutsideAnX11Session)
{
    for (const auto& words : { std::vector<std::string> { "clipboard", "read" }, { "clipboard", "copy", "x" } }) {
        std::vector<std::string> arguments { QUILLMAR_BINARY };
        arguments.insert(arguments.end(), words.begin(), words.end());
        auto child = ChildProcess::start(arguments, { "DISPLAY=", "WAYLAND_DISPLAY=wayland-0" });
        ASSERT_TRUE(child);
        EXPECT_EQ(child->readErrorLine(deadline()), "Clipboard history needs an X11 session for now.") << words[1];
        EXPECT_EQ(child->wait(deadline()), 1) << words[1];
    }
}

} // namespace
} // namespace quillmar
