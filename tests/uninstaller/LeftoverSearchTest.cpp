#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "core/uninstaller/AppIdentity.h"
#include "core/uninstaller/LeftoverSearch.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/uninstaller/LibraryFixture.h"
#include "tests/uninstaller/UninstallerFakes.h"

namespace quillmar {
namespace {

namespace fs = std::filesystem;
using testing_support::FakeSigningInfo;
using testing_support::makeApp;
using testing_support::makeEntries;

class LeftoverSearchTest : public testing::Test {
protected:
    void SetUp() override
    {
        m_bundle = makeApp(m_folder.path() / "Applications" / "Example Editor.app", "com.example.Editor",
            {
                { "Contents/Library/LoginItems/Example Launcher.app", "com.example.Editor.Launcher" },
                { "Contents/XPCServices/Renderer.xpc", "com.example.renderer" },
                { "Contents/PlugIns/Share.appex", "com.example.share" },
                { "Contents/Frameworks/Sentry.framework/Versions/A/XPCServices/Crash.xpc", "io.sentry.Sentry" },
                { "Contents/Frameworks/Sparkle.framework/Versions/B/XPCServices/Installer.xpc",
                    "org.sparkle-project.InstallerLauncher" },
                { "Contents/Resources/a/b/c/d/e/Shallow.app", "com.example.shallow" },
                { "Contents/Resources/a/b/c/d/e/f/Deep.app", "com.example.deep" },
                { "Contents/MacOS/Editor.app", "com.example.Editor" },
            });
        makeApp(m_folder.path() / "Elsewhere" / "Linked.app", "com.elsewhere.linked");
        fs::create_directory_symlink(m_folder.path() / "Elsewhere", m_bundle / "Contents" / "Frameworks" / "Linked");
        m_signing.answer = { "ABCDE12345", { "ABCDE12345.com.example.shared", "group.com.example.editor" } };
    }

    AppIdentity identity() { return AppIdentity::make(m_bundle, "com.example.Editor", m_signing); }

    TemporaryFolder m_folder;
    fs::path m_bundle;
    fs::path m_library = m_folder.path() / "Library";
    FakeSigningInfo m_signing;
};

TEST_F(LeftoverSearchTest, IdentityCollectsNestedBundlesSigningAndNames)
{
    auto made = identity();
    EXPECT_EQ(made.bundleID, "com.example.Editor");
    auto embedded = made.embeddedBundleIDs;
    std::sort(embedded.begin(), embedded.end());
    EXPECT_EQ(embedded,
        (std::vector<std::string> { "com.example.Editor.Launcher", "com.example.renderer", "com.example.shallow",
            "com.example.share" }));
    auto shared = made.protectedEmbeddedIDs;
    std::sort(shared.begin(), shared.end());
    EXPECT_EQ(shared, (std::vector<std::string> { "io.sentry.Sentry", "org.sparkle-project.InstallerLauncher" }));
    EXPECT_EQ(made.teamIdentifier, "ABCDE12345");
    EXPECT_EQ(made.applicationGroups.size(), 2u);
    EXPECT_EQ(made.nameSequences, (std::vector<std::vector<std::string>> { { "example", "editor" }, { "editor" } }));
    EXPECT_EQ(made.nameTokens(), (std::vector<std::string> { "example", "editor" }));
}

TEST_F(LeftoverSearchTest, FindsExactRelatedAndByNameEntriesInTableOrder)
{
    makeEntries(m_library,
        {
            "Application Support/com.example.Editor/",
            "Application Support/Example Editor/",
            "Application Support/Example/",
            "Application Support/Editor Tools/",
            "Application Support/CrashReporter/com.example.Editor.crash",
            "Caches/com.example.Editor/",
            "Caches/com.example.renderer/",
            "Caches/io.sentry.Sentry/",
            "Caches/Sentry/",
            "Caches/org.sparkle-project.Sparkle/",
            "Caches/com.example.Editorial/",
            "Caches/example-editor/",
            "Preferences/com.example.Editor.plist",
            "Preferences/com.example.Editor.helper.plist",
            "Preferences/com.example.share.plist",
            "Preferences/Example Editor.plist",
            "Preferences/ByHost/com.example.Editor.0A1B2C3D-0000-1111-2222-333344445555.plist",
            "Containers/com.example.share/",
            "Group Containers/ABCDE12345.com.example.shared/",
            "Group Containers/group.com.example.editor/",
            "Group Containers/ABCDE12345.com.example.other/",
            "Group Containers/ZZZZZ99999.com.example.other/",
            "Group Containers/ABCDE12345.com.example.Editor/",
            "Saved Application State/com.example.Editor.savedstate/",
            "Logs/Example Editor/",
            "Logs/com.example.Editor.log",
            "HTTPStorages/com.example.Editor.binarycookies",
            "LaunchAgents/com.example.Editor.Launcher.plist",
            "Somewhere Else/com.example.Editor/",
        });
    // A searched folder that is a file cannot be listed and is passed over.
    testing_support::writeFixtureFile(m_library / "WebKit", "not a folder");

    std::vector<std::string> seen;
    for (const auto& leftover : LeftoverSearch::find(identity(), m_library)) {
        seen.push_back(fmt::format("{} | {} | {}{}{}", leftover.url.lexically_relative(m_library).string(), leftover.kind,
            leftover.isExact ? "exact" : "related", leftover.isSelected ? " ticked" : "", leftover.byName ? " byName" : ""));
        EXPECT_EQ(leftover.size, 0);
    }
    EXPECT_EQ(seen,
        (std::vector<std::string> {
            "Application Support/Example Editor | App data | related byName",
            "Application Support/com.example.Editor | App data | exact ticked",
            "Application Support/CrashReporter/com.example.Editor.crash | Crash reports | related",
            "Caches/com.example.Editor | Cache | exact ticked",
            "Caches/com.example.renderer | Cache | exact ticked",
            "Caches/example-editor | Cache | related byName",
            "Preferences/com.example.Editor.helper.plist | Preferences | related",
            "Preferences/com.example.Editor.plist | Preferences | exact ticked",
            "Preferences/com.example.share.plist | Preferences | exact ticked",
            "Preferences/ByHost/com.example.Editor.0A1B2C3D-0000-1111-2222-333344445555.plist | Preferences | exact ticked",
            "Containers/com.example.share | Sandbox container | exact ticked",
            "Group Containers/ABCDE12345.com.example.Editor | Shared container | exact ticked",
            "Group Containers/ABCDE12345.com.example.other | Shared container | related",
            "Group Containers/ABCDE12345.com.example.shared | Shared container | exact ticked",
            "Group Containers/group.com.example.editor | Shared container | exact ticked",
            "Saved Application State/com.example.Editor.savedstate | Saved window state | exact ticked",
            "Logs/Example Editor | Logs | related byName",
            "Logs/com.example.Editor.log | Logs | exact ticked",
            "HTTPStorages/com.example.Editor.binarycookies | Web storage | exact ticked",
            "LaunchAgents/com.example.Editor.Launcher.plist | Launch agent | exact ticked",
        }));
}

TEST_F(LeftoverSearchTest, ProgressNamesEachFolderAndCancelStopsBetweenFolders)
{
    makeEntries(m_library, { "Caches/com.example.Editor/", "Logs/com.example.Editor.log" });
    std::vector<std::string> folders;
    auto found = LeftoverSearch::find(
        identity(), m_library,
        [&folders](std::size_t, const LeftoverLocation& location) { folders.emplace_back(location.folder); },
        [&folders] { return folders.size() >= 3; });
    EXPECT_EQ(folders, (std::vector<std::string> { "Application Support", "Application Support/CrashReporter", "Caches" }));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found.front().url, m_library / "Caches" / "com.example.Editor");
}

TEST(LeftoverJudgeTest, ProtectedComponentsAreNeverOfferedWhateverTheNameSays)
{
    AppIdentity identity;
    identity.bundleID = "com.example.sentry-client";
    identity.protectedEmbeddedIDs = { "io.sentry.Sentry" };
    identity.nameSequences = { { "sentry" } };
    const auto& caches = LeftoverLocation::all()[2];
    ASSERT_EQ(caches.folder, "Caches");
    EXPECT_EQ(LeftoverSearch::judge("Sentry", caches, identity).match, MatchClass::none);
    EXPECT_EQ(LeftoverSearch::judge("io.sentry.Sentry", caches, identity).match, MatchClass::none);
    EXPECT_EQ(LeftoverSearch::judge("com.example.sentry-client", caches, identity).match, MatchClass::exact);

    // An application whose own identifier is protected never gets a leftover offered.
    identity.bundleID = "com.apple.Pages";
    EXPECT_EQ(LeftoverSearch::judge("com.apple.Pages.plist", caches, identity).match, MatchClass::none);
}

TEST(LeftoverJudgeTest, ByNameNeedsTheWholeNameInTheByNameFolders)
{
    AppIdentity identity;
    identity.bundleID = "com.microsoft.VSCode";
    identity.nameSequences = { { "visual", "studio", "code" }, { "vscode" } };
    auto locations = LeftoverLocation::all();
    const auto& support = locations[0];
    const auto& preferences = locations[3];
    struct Row {
        const char* name;
        const char* entry;
        const LeftoverLocation& location;
        LeftoverSearch::Verdict verdict;
    };
    const Row rows[] = {
        { "wholeName", "Visual Studio Code", support, { MatchClass::related, true } },
        { "identifierComponent", "VSCode", support, { MatchClass::related, true } },
        { "otherSpelling", "visual-studio-code.log", support, { MatchClass::related, true } },
        { "oneSharedWord", "Code", support, {} },
        { "twoOfThreeWords", "Visual Studio", support, {} },
        { "extraWord", "Visual Studio Code Insiders", support, {} },
        { "wordsReordered", "Code Studio Visual", support, {} },
        { "notAByNameFolder", "Visual Studio Code", preferences, {} },
        { "identifierWinsOverName", "com.microsoft.VSCode", support, { MatchClass::exact, false } },
    };
    for (const auto& row : rows)
        EXPECT_EQ(LeftoverSearch::judge(row.entry, row.location, identity), row.verdict) << row.name;
}

} // namespace
} // namespace quillmar
