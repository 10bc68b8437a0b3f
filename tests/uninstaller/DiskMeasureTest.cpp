#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>

#include "core/uninstaller/DiskMeasure.h"
#include "platform/posix/PosixDiskUsage.h"
#include "tests/apps/BundleFixture.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

namespace fs = std::filesystem;
using testing_support::writeFixtureFile;

class DiskMeasureTest : public testing::Test {
protected:
    std::int64_t allocated(const fs::path& path) const { return m_usage.examine(path)->allocatedBytes; }

    TemporaryFolder m_folder;
    PosixDiskUsage m_usage;
};

TEST_F(DiskMeasureTest, CountsBlocksOfEverythingInsideOnce)
{
    auto root = m_folder.path() / "Cache";
    writeFixtureFile(root / "one.bin", std::string(10000, 'x'));
    writeFixtureFile(root / "deeper" / "two.bin", std::string(3000, 'y'));
    fs::create_hard_link(root / "one.bin", root / "deeper" / "same.bin");
    writeFixtureFile(m_folder.path() / "outside.bin", std::string(200000, 'z'));
    fs::create_symlink(m_folder.path() / "outside.bin", root / "link.bin");

    auto expected = allocated(root) + allocated(root / "one.bin") + allocated(root / "deeper")
        + allocated(root / "deeper" / "two.bin") + allocated(root / "link.bin");
    EXPECT_EQ(DiskMeasure::allocatedSize(m_usage, root), expected);
    EXPECT_GE(allocated(root / "one.bin"), 10000);
    // The link's target is never counted.
    EXPECT_LT(DiskMeasure::allocatedSize(m_usage, root), 200000);
    EXPECT_EQ(DiskMeasure::allocatedSize(m_usage, root / "one.bin"), allocated(root / "one.bin"));
    EXPECT_EQ(DiskMeasure::allocatedSize(m_usage, m_folder.path() / "missing"), 0);
}

TEST_F(DiskMeasureTest, LastUseIsTheLatestTimeOfTheMainParts)
{
    auto bundle = m_folder.path() / "Example.app";
    writeFixtureFile(bundle / "Contents" / "Info.plist", "plist");
    writeFixtureFile(bundle / "Contents" / "MacOS" / "Example", "executable");
    writeFixtureFile(bundle / "Contents" / "Resources" / "later.txt", "not a main part");
    auto old = fs::file_time_type::clock::now() - std::chrono::hours(24 * 400);
    for (const auto& path : { bundle, bundle / "Contents", bundle / "Contents" / "Info.plist", bundle / "Contents" / "MacOS",
             bundle / "Contents" / "MacOS" / "Example", bundle / "Contents" / "Resources" / "later.txt" })
        fs::last_write_time(path, old);

    auto used = DiskMeasure::lastUsed(m_usage, bundle);
    ASSERT_TRUE(used.has_value());
    // Access times were set by the writes (now) or kept by the mount; either way not before the old stamps.
    auto executable = m_usage.examine(bundle / "Contents" / "MacOS" / "Example");
    EXPECT_GE(*used, std::max(executable->accessed, executable->modified));
    EXPECT_EQ(DiskMeasure::lastUsed(m_usage, m_folder.path() / "Missing.app"), std::nullopt);
}

} // namespace
} // namespace quillmar
