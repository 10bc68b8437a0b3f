#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "core/base/Files.h"
#include "core/uninstaller/Removal.h"
#include "platform/linux/GioRecycler.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

namespace fs = std::filesystem;

// GIO reads HOME and XDG_DATA_HOME once, at its first use in the process; every test here shares one
// temporary home set up before that.
class GioRecyclerTest : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        s_folder = std::make_unique<TemporaryFolder>();
        fs::create_directories(home());
        ::setenv("HOME", home().c_str(), 1);
        ::setenv("XDG_DATA_HOME", (home() / ".local" / "share").c_str(), 1);
    }
    static void TearDownTestSuite() { s_folder.reset(); }

    static fs::path home() { return s_folder->path() / "home"; }
    static fs::path trash() { return home() / ".local" / "share" / "Trash"; }

    fs::path file(const std::string& relative, const std::string& contents = "data")
    {
        auto path = home() / relative;
        EXPECT_TRUE(writeFileAtomically(path, contents).ok());
        return path;
    }

    RecycleOutcome recycle(const std::vector<fs::path>& paths, std::size_t batchSize = 8)
    {
        return m_recycler.recycle(paths, batchSize, {}, {});
    }

    static std::string trashInfo(const std::string& name)
    {
        auto text = readFile(trash() / "info" / (name + ".trashinfo"));
        return text.ok() && text->has_value() ? **text : std::string();
    }

    GioRecycler m_recycler;
    static std::unique_ptr<TemporaryFolder> s_folder;
};

std::unique_ptr<TemporaryFolder> GioRecyclerTest::s_folder;

TEST_F(GioRecyclerTest, MovesFilesAndFoldersWithTheirInfoFiles)
{
    auto preferences = file("Library/Preferences/com.example.Moved.plist");
    auto cache = file("Library/Caches/com.example.Moved/cache.db").parent_path();
    auto outcome = recycle({ preferences, cache }, /*batchSize=*/1);

    EXPECT_EQ(outcome.moved, (std::vector<fs::path> { preferences, cache }));
    EXPECT_TRUE(outcome.failed.empty());
    EXPECT_FALSE(fs::exists(preferences));
    EXPECT_FALSE(fs::exists(cache));
    EXPECT_TRUE(fs::exists(trash() / "files" / "com.example.Moved" / "cache.db"));
    auto info = trashInfo("com.example.Moved.plist");
    EXPECT_NE(info.find("[Trash Info]"), std::string::npos) << info;
    EXPECT_NE(info.find("Path=" + preferences.string()), std::string::npos) << info;
    EXPECT_NE(info.find("DeletionDate="), std::string::npos) << info;
}

TEST_F(GioRecyclerTest, MissingPathFailsAloneAndTheRestStillMoves)
{
    auto missing = home() / "Library" / "Caches" / "com.example.Gone";
    auto present = file("Library/Logs/com.example.Present.log");
    auto outcome = recycle({ missing, present });

    EXPECT_EQ(outcome.moved, (std::vector<fs::path> { present }));
    ASSERT_EQ(outcome.failed.size(), 1u);
    EXPECT_EQ(outcome.failed[0].path, missing);
    EXPECT_EQ(outcome.failed[0].reason, RecycleFailure::Reason::notFound);
    EXPECT_FALSE(outcome.failed[0].message.empty());
}

TEST_F(GioRecyclerTest, RemovalThroughTheTrashReportsWithTheSentences)
{
    auto gone = RemovalItem { home() / "Library" / "Caches" / "com.example.Vanished", "com.example.Vanished", false };
    auto kept = RemovalItem { home() / "Library" / "Caches", "Caches", false };
    auto data = RemovalItem { file("Library/Caches/com.example.Removed/blob").parent_path(), "com.example.Removed", false };
    auto outcome = Removal::run({ gone, kept, data }, home(), m_recycler);

    EXPECT_EQ(outcome.moved, (std::vector<RemovalItem> { data }));
    EXPECT_EQ(outcome.skipped, (std::vector<RemovalItem> { kept }));
    EXPECT_EQ(outcome.resultLine(), "1 moved to the Trash");
    EXPECT_EQ(outcome.failureLine(), "Couldn't remove com.example.Vanished");
    EXPECT_EQ(outcome.hint(), std::nullopt);
    EXPECT_TRUE(fs::exists(home() / "Library" / "Caches"));
    EXPECT_TRUE(fs::exists(trash() / "info" / "com.example.Removed.trashinfo"));
}

TEST_F(GioRecyclerTest, ALinkIsMovedItselfNeverItsTarget)
{
    auto target = file("Documents/precious.txt", "keep me");
    auto link = home() / "Library" / "Containers" / "com.example.Linked";
    fs::create_directories(link.parent_path());
    fs::create_symlink(target, link);
    auto outcome = recycle({ link });

    EXPECT_EQ(outcome.moved, (std::vector<fs::path> { link }));
    EXPECT_TRUE(fs::exists(target));
    EXPECT_TRUE(fs::is_symlink(trash() / "files" / "com.example.Linked"));
}

TEST_F(GioRecyclerTest, SameNameTwiceKeepsBoth)
{
    auto first = file("Library/Caches/one/com.example.Twice");
    auto second = file("Library/Caches/two/com.example.Twice");
    auto outcome = recycle({ first, second });

    EXPECT_EQ(outcome.moved.size(), 2u);
    // The second one gets a number inside its name ("com.2.example.Twice").
    int copies = 0;
    for (const auto& entry : fs::directory_iterator(trash() / "files"))
        copies += entry.path().filename().string().ends_with("example.Twice") ? 1 : 0;
    EXPECT_EQ(copies, 2);
}

} // namespace
} // namespace quillmar
