#include <gtest/gtest.h>

#include <fstream>

#include "core/agents/LineReader.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

std::vector<std::string> readAll(const std::filesystem::path& path, LineReader::Limits limits)
{
    LineReader reader(limits);
    std::vector<std::string> lines;
    auto result = reader.read(path, [&](const LogLine& line) {
        EXPECT_GE(line.capacity, line.text.size() + logLinePadding);
        // The padding must really be there: the sanitizer catches a read past the buffer.
        volatile char last = line.text.data()[line.capacity - 1];
        (void)last;
        lines.emplace_back(line.text);
    });
    EXPECT_TRUE(result.ok());
    EXPECT_EQ(reader.bytesRead(), std::filesystem::file_size(path));
    return lines;
}

TEST(LineReader, SameLinesWhateverTheChunkSize)
{
    TemporaryFolder folder;
    auto path = folder.path() / "log.jsonl";
    std::string longLine(10'000, 'x');
    std::ofstream(path, std::ios::binary) << "first\r\nsecond\n\n" << longLine << "\nlast without a break";
    const std::vector<std::string> expected { "first", "second", "", longLine, "last without a break" };
    for (std::size_t chunk : { 1u, 2u, 7u, 64u, 4096u, 1u << 20 }) {
        LineReader::Limits limits;
        limits.chunkSize = chunk;
        EXPECT_EQ(readAll(path, limits), expected) << "chunk " << chunk;
    }
}

TEST(LineReader, OverlongLinesAreSkippedWhole)
{
    TemporaryFolder folder;
    auto path = folder.path() / "log.jsonl";
    std::ofstream(path, std::ios::binary) << "short\n" << std::string(5'000, 'y') << "\nafter\n" << std::string(300, 'z');
    for (std::size_t chunk : { 16u, 100u, 1u << 16 }) {
        LineReader::Limits limits;
        limits.chunkSize = chunk;
        limits.maxLineLength = 256;
        EXPECT_EQ(readAll(path, limits), (std::vector<std::string> { "short", "after" })) << "chunk " << chunk;
    }
}

TEST(LineReader, EmptyAndMissingFiles)
{
    TemporaryFolder folder;
    std::ofstream(folder.path() / "empty.jsonl");
    EXPECT_TRUE(readAll(folder.path() / "empty.jsonl", {}).empty());
    LineReader reader;
    auto missing = reader.read(folder.path() / "missing.jsonl", [](const LogLine&) { ADD_FAILURE(); });
    ASSERT_FALSE(missing.ok());
    EXPECT_EQ(missing.error().code, "agents.unreadable");
}

} // namespace
} // namespace quillmar
