#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "tests/apps/BundleFixture.h"
#include "tests/cli/CliHarness.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

namespace fs = std::filesystem;
using testing_support::makeBundle;
using testing_support::writeFixtureFile;
using testing_support::xmlInfoPlist;

class UninstallCommandsTest : public CliTest {
protected:
    void SetUp() override
    {
        makeBundle(m_app, xmlInfoPlist({ { "CFBundleIdentifier", "com.example.App" }, { "CFBundleName", "Example" },
                              { "CFBundleShortVersionString", "2.5" } }));
        makeBundle(m_app / "Contents" / "Frameworks" / "Sentry.framework" / "Versions" / "A" / "XPCServices" / "C.xpc",
            xmlInfoPlist({ { "CFBundleIdentifier", "io.sentry.Sentry" } }));
        for (const auto& relative : { "Caches/com.example.App/cache.db", "Preferences/com.example.App.plist",
                 "Application Support/com.example.App.helper/state", "Application Support/Example/notes",
                 "Caches/Sentry/events", "Logs/Unrelated/log.txt" })
            writeFixtureFile(m_library / relative, "data");
    }

    fs::path m_home = m_folder.path() / "home";
    fs::path m_app = m_home / "Applications" / "Example.app";
    fs::path m_library = m_home / "Library";
};

TEST_F(UninstallCommandsTest, ClassifyAndProtected)
{
    struct Row {
        std::vector<std::string> words;
        int code;
        std::string out;
    };
    for (const auto& row : {
             Row { { "uninstall", "classify", "com.example.App.plist", "com.example.App" }, 0, "exact\n" },
             Row { { "uninstall", "classify", "com.example.Apple", "com.example.App" }, 0, "none\n" },
             Row { { "uninstall", "classify", "com.example.App" }, 2, "" },
             Row { { "uninstall", "protected", "io.sentry.Sentry" }, 0, "true\n" },
         }) {
        auto result = run(row.words);
        EXPECT_EQ(result.code, row.code) << row.words[2] << " " << row.words[3];
        EXPECT_EQ(result.out, row.out) << row.words[2] << " " << row.words[3];
    }
    auto batch = run({ "uninstall", "classify", "--batch" },
        "ABCDE12345.com.example.App\tcom.example.App\r\nABCD.com.example.App\tcom.example.App\nno tab here\n");
    EXPECT_EQ(batch.code, 0);
    EXPECT_EQ(batch.out, "exact\nnone\n\n");
}

TEST_F(UninstallCommandsTest, CheckPrintsTheRefusalOrNothing)
{
    auto fine = run({ "uninstall", "check", m_app.string() });
    EXPECT_EQ(fine.code, 0);
    EXPECT_EQ(fine.out + fine.err, "");

    auto remove = run({ "uninstall", "remove", (m_library / "Caches").string(), "--home", m_home.string(), "--yes" });
    EXPECT_EQ(remove.code, 1);
    EXPECT_EQ(remove.err, "That isn't an app.\n");
}

TEST_F(UninstallCommandsTest, ScanPrintsTheLeftoversAsJson)
{
    auto result = run({ "uninstall", "scan", m_app.string(), "--home", m_home.string(), "--json" });
    ASSERT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(result.err, "");
    auto object = nlohmann::json::parse(result.out);
    EXPECT_EQ(object["app"]["bundleID"], "com.example.App");
    EXPECT_EQ(object["app"]["version"], "2.5");
    EXPECT_GT(object["app"]["size"].get<std::int64_t>(), 0);
    std::vector<std::string> rows;
    for (const auto& leftover : object["leftovers"]) {
        EXPECT_GT(leftover["size"].get<std::int64_t>(), 0);
        rows.push_back(fs::path(leftover["path"].get<std::string>()).lexically_relative(m_library).string() + " "
            + leftover["kind"].get<std::string>() + (leftover["exact"].get<bool>() ? " exact" : " related")
            + (leftover["selected"].get<bool>() ? " selected" : "") + (leftover["byName"].get<bool>() ? " byName" : ""));
    }
    EXPECT_EQ(rows,
        (std::vector<std::string> { "Application Support/Example App data related byName",
            "Application Support/com.example.App.helper App data related", "Caches/com.example.App Cache exact selected",
            "Preferences/com.example.App.plist Preferences exact selected" }));
}

TEST_F(UninstallCommandsTest, RemoveListsAndAsksFirst)
{
    auto dryRun = run({ "uninstall", "remove", m_app.string(), "--home", m_home.string(), "--dry-run" });
    EXPECT_EQ(dryRun.code, 0);
    EXPECT_EQ(dryRun.out,
        "Would move to the Trash:\n  " + (m_library / "Caches/com.example.App").string() + "\n  "
            + (m_library / "Preferences/com.example.App.plist").string() + "\n  " + m_app.string() + "\n");

    auto declined = run({ "uninstall", "remove", m_app.string(), "--home", m_home.string(), "--leftovers", "none" }, "n\n");
    EXPECT_EQ(declined.code, 1);
    EXPECT_EQ(declined.out, "To move to the Trash:\n  " + m_app.string() + "\nMove these to the Trash? [y/N] ");
    EXPECT_EQ(declined.err, "Nothing was moved.\n");
    EXPECT_TRUE(fs::exists(m_app));

    auto wrongChoice = run({ "uninstall", "remove", m_app.string(), "--leftovers", "some" });
    EXPECT_EQ(wrongChoice.code, 2);
}

TEST_F(UninstallCommandsTest, TrashCheck)
{
    auto home = m_home.string();
    EXPECT_EQ(run({ "trash", "check", home + "/Library/Caches", "--home", home }).out, "refused\n");
    EXPECT_EQ(run({ "trash", "check", home + "/Library/Caches/com.example.App/", "--home", home }).out, "safe\n");
    auto batch = run({ "trash", "check", "--home", home, "--batch" },
        home + "/Documents\n/usr/../\n" + home + "/Library/Logs/Unrelated\n\n");
    EXPECT_EQ(batch.code, 0);
    EXPECT_EQ(batch.out, "refused\nrefused\nsafe\nrefused\n");
}

// The real binary moves files into a real Trash under a temporary home, as a user runs it.
TEST_F(UninstallCommandsTest, BinaryMovesOnlySafeChosenPathsToTheTrash)
{
    // A Library folder replaced by a link: what lies behind it is never moved.
    auto elsewhere = m_folder.path() / "elsewhere";
    writeFixtureFile(elsewhere / "com.example.App" / "keep", "data");
    writeFixtureFile(m_library / "Logs" / "com.example.App.log", "log");
    fs::create_directory_symlink(elsewhere, m_library / "HTTPStorages");

    auto binary = runQuillmarBinary(m_folder.path(), { "uninstall", "remove", m_app.string(), "--yes" }, {},
        { "HOME=" + m_home.string() });
    auto output = binary.out + binary.err;
    EXPECT_EQ(binary.code, 0) << output;
    EXPECT_NE(output.find("4 moved to the Trash\n"), std::string::npos) << output;
    EXPECT_NE(output.find("Kept " + (m_library / "HTTPStorages" / "com.example.App").string()), std::string::npos) << output;

    auto trash = m_folder.path() / "data" / "Trash";
    for (const auto& name : { "Example.app", "com.example.App", "com.example.App.plist", "com.example.App.log" }) {
        EXPECT_TRUE(fs::exists(trash / "files" / name)) << name;
        EXPECT_TRUE(fs::exists(trash / "info" / (std::string(name) + ".trashinfo"))) << name;
    }
    EXPECT_FALSE(fs::exists(m_app));
    EXPECT_TRUE(fs::exists(elsewhere / "com.example.App" / "keep"));
    EXPECT_TRUE(fs::exists(m_library / "Application Support" / "com.example.App.helper"));
    EXPECT_TRUE(fs::exists(m_library / "Caches" / "Sentry"));
}

} // namespace
} // namespace quillmar
