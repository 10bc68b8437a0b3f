#include <climits>
#include <fstream>
#include <unistd.h>

#include <gtest/gtest.h>

#include "core/base/Files.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

// Above any kernel's pid limit, so no process can have it.
constexpr long deadPid = INT_MAX;

void touch(const std::filesystem::path& path)
{
    std::ofstream(path) << "partial";
}

std::filesystem::path temporary(const std::filesystem::path& file, long pid)
{
    auto path = file;
    path += ".tmp-" + std::to_string(pid);
    return path;
}

TEST(RemoveStaleTemporaries, RemovesThoseOfEndedProcessesAndKeepsThoseOfRunningOnes)
{
    TemporaryFolder folder;
    auto file = folder.path() / "settings.json";
    auto dead = temporary(file, deadPid);
    auto live = temporary(file, static_cast<long>(::getpid()));
    touch(dead);
    touch(live);
    EXPECT_EQ(removeStaleTemporaries(file), 1u);
    EXPECT_FALSE(std::filesystem::exists(dead));
    EXPECT_TRUE(std::filesystem::exists(live));
}

TEST(WriteFileAtomically, RemovesTheTemporaryFilesOfProcessesThatNoLongerRun)
{
    TemporaryFolder folder;
    auto file = folder.path() / "settings.json";
    auto dead = temporary(file, deadPid);
    // This process's own temporary is the write's; the parent's stands for another writer still at work.
    auto live = temporary(file, static_cast<long>(::getppid()));
    auto deadOfAnotherFile = temporary(folder.path() / "history.json", deadPid);
    auto notATemporary = folder.path() / "settings.json.tmp-12ab";
    for (const auto& path : { dead, live, deadOfAnotherFile, notATemporary })
        touch(path);

    ASSERT_TRUE(writeFileAtomically(file, "{}\n"));
    EXPECT_FALSE(std::filesystem::exists(dead));
    EXPECT_TRUE(std::filesystem::exists(live)) << "a write in progress elsewhere is left alone";
    EXPECT_TRUE(std::filesystem::exists(deadOfAnotherFile)) << "another file's temporaries are its own business";
    EXPECT_TRUE(std::filesystem::exists(notATemporary));
    EXPECT_EQ(readFile(file).value(), "{}\n");
}

} // namespace
} // namespace quillmar
