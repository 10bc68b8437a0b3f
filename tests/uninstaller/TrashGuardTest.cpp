#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/uninstaller/TrashGuard.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

namespace fs = std::filesystem;

TEST(TrashGuardTest, EveryProtectedPathIsRefused)
{
    const fs::path home = "/Users/someone";
    for (auto system : TrashGuard::systemPaths)
        EXPECT_FALSE(TrashGuard::isSafeToTrash(fs::path(system), home)) << system;
    for (auto below : TrashGuard::homePaths) {
        auto path = below.empty() ? home : home / below;
        EXPECT_FALSE(TrashGuard::isSafeToTrash(path, home)) << path;
    }
    EXPECT_EQ(TrashGuard::systemPaths.size() + TrashGuard::homePaths.size(), 29u);
}

struct GuardRow {
    const char* name;
    const char* path;
    bool safe;
};

TEST(TrashGuardTest, StandardisesBeforeComparing)
{
    // Nothing below this home exists, so no component can be a link.
    const fs::path home = "/nonexistent-home/someone";
    const GuardRow rows[] = {
        { "cachesItselfRefused", "/nonexistent-home/someone/Library/Caches", false },
        { "cacheEntryAllowed", "/nonexistent-home/someone/Library/Caches/com.example.App", true },
        { "trailingSlashes", "/nonexistent-home/someone/Library/Caches///", false },
        { "dotDotBackToCaches", "/nonexistent-home/someone/Library/Caches/com.example.App/..", false },
        { "dotDotUpToHome", "/nonexistent-home/someone/Library/..", false },
        { "dotSegments", "/nonexistent-home/someone/./Library/./Preferences/.", false },
        { "doubledSeparators", "/nonexistent-home//someone//Documents", false },
        { "dotDotToRoot", "/usr/../..", false },
        { "systemWithTrailingSlash", "/Applications/", false },
        { "anApplication", "/Applications/Example.app", true },
        { "aDocumentInside", "/nonexistent-home/someone/Documents/old.txt", true },
        { "lookalikeName", "/nonexistent-home/someone/Library/CachesOld", true },
        { "relativePathRefused", "Library/Caches/com.example.App", false },
        { "emptyRefused", "", false },
    };
    for (const auto& row : rows)
        EXPECT_EQ(TrashGuard::isSafeToTrash(row.path, home), row.safe) << row.name;
}

TEST(TrashGuardTest, HomeGivenWithTrailingSlashStillProtects)
{
    EXPECT_FALSE(TrashGuard::isSafeToTrash("/nonexistent-home/someone/Desktop", "/nonexistent-home/someone/"));
    EXPECT_FALSE(TrashGuard::isSafeToTrash("/nonexistent-home/someone", "/nonexistent-home/someone/./"));
}

class TrashGuardLinkTest : public testing::Test {
protected:
    void SetUp() override
    {
        fs::create_directories(m_home / "Library" / "Containers" / "com.example.App" / "Data");
        fs::create_directories(m_folder.path() / "elsewhere" / "precious");
    }

    TemporaryFolder m_folder;
    fs::path m_home = m_folder.path() / "home";
};

TEST_F(TrashGuardLinkTest, LinkPlantedInsideAContainerIsRefused)
{
    auto data = m_home / "Library" / "Containers" / "com.example.App" / "Data";
    fs::create_directory_symlink(m_folder.path() / "elsewhere", data / "Documents");
    EXPECT_FALSE(TrashGuard::isSafeToTrash(data / "Documents" / "precious", m_home));
    EXPECT_TRUE(TrashGuard::hasSymlink(data / "Documents" / "precious", m_home));
    // The container above the link is fine to move as a whole.
    EXPECT_TRUE(TrashGuard::isSafeToTrash(m_home / "Library" / "Containers" / "com.example.App", m_home));
}

TEST_F(TrashGuardLinkTest, ALinkAsTheLastComponentIsRefused)
{
    for (const auto& link : { m_home / "Library" / "Caches" / "com.example.App",
             m_home / "Library" / "Containers" / "com.example.App" / "Data" / "Shortcut" }) {
        fs::create_directories(link.parent_path());
        fs::create_directory_symlink(m_folder.path() / "elsewhere", link);
        EXPECT_FALSE(TrashGuard::isSafeToTrash(link, m_home)) << link;
        EXPECT_TRUE(TrashGuard::hasSymlink(link, m_home)) << link;
    }
}

TEST_F(TrashGuardLinkTest, LinkedLibraryFolderRefusesEverythingBelowIt)
{
    fs::create_directories(m_folder.path() / "real-caches" / "com.example.App");
    fs::create_directory_symlink(m_folder.path() / "real-caches", m_home / "Library" / "Caches");
    EXPECT_FALSE(TrashGuard::isSafeToTrash(m_home / "Library" / "Caches" / "com.example.App", m_home));
}

TEST_F(TrashGuardLinkTest, LinksOutsideHomeAreNotLookedAt)
{
    fs::create_directory_symlink(m_folder.path() / "elsewhere", m_folder.path() / "linked");
    EXPECT_TRUE(TrashGuard::isSafeToTrash(m_folder.path() / "linked" / "precious", m_home));
    EXPECT_FALSE(TrashGuard::hasSymlink(m_folder.path() / "linked" / "precious", m_home));
}

TEST(TrashGuardTest, ExclusionsMatchWholeComponents)
{
    const std::vector<fs::path> excluded { "/Users/someone/Library/Caches/com.keep.App", "/Volumes/Work/" };
    const GuardRow rows[] = {
        { "equal", "/Users/someone/Library/Caches/com.keep.App", true },
        { "inside", "/Users/someone/Library/Caches/com.keep.App/data.db", true },
        { "insideAfterDotDot", "/Users/someone/Library/Caches/other/../com.keep.App/x", true },
        { "siblingWithLongerName", "/Users/someone/Library/Caches/com.keep.AppHelper", false },
        { "parent", "/Users/someone/Library/Caches", false },
        { "excludedWithTrailingSlash", "/Volumes/Work/project", true },
        { "unrelated", "/Applications/Example.app", false },
    };
    for (const auto& row : rows)
        EXPECT_EQ(TrashGuard::isExcluded(row.path, excluded), row.safe) << row.name;
    EXPECT_FALSE(TrashGuard::isExcluded("/Volumes/Work", {}));
}

} // namespace
} // namespace quillmar
