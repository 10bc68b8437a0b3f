#include <gtest/gtest.h>

#include "core/apps/AppInventory.h"
#include "tests/apps/BundleFixture.h"
#include "tests/apps/PropertyListWriter.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

using namespace testing_support;

struct ExtraFile {
    std::string relativePath;
    std::string contents;
};

struct ReadCase {
    const char* name;
    PlistStrings info;
    std::vector<ExtraFile> files;
    // Expected, or none when the bundle is not listed.
    std::optional<InstalledBundle> expected;
};

// The expected bundle at "Fixture.app"; `url` is filled in by the test.
InstalledBundle bundle(std::string name, std::string bundleID, std::string shortVersion, std::string build)
{
    return InstalledBundle { {}, std::move(name), std::move(bundleID), std::move(shortVersion), std::move(build),
        std::nullopt, false, false, false, std::nullopt };
}

InstalledBundle withFeed(InstalledBundle expected, const char* feed)
{
    expected.feedURL = Url::parse(feed);
    return expected;
}

InstalledBundle insecure(InstalledBundle expected)
{
    expected.hasInsecureFeed = true;
    return expected;
}

InstalledBundle fromStore(InstalledBundle expected)
{
    expected.isAppStore = true;
    return expected;
}

InstalledBundle withElectron(InstalledBundle expected, const char* manifest, std::optional<const char*> page)
{
    expected.electron = ElectronFeed::Config { *Url::parse(manifest), page ? Url::parse(*page) : std::nullopt };
    return expected;
}

class AppInventoryReadTest : public testing::TestWithParam<ReadCase> {
protected:
    TemporaryFolder m_folder;
};

TEST_P(AppInventoryReadTest, Reads)
{
    auto path = m_folder.path() / "Fixture.app";
    makeBundle(path, xmlInfoPlist(GetParam().info));
    for (const auto& file : GetParam().files)
        writeFixtureFile(path / file.relativePath, file.contents);
    auto expected = GetParam().expected;
    if (expected)
        expected->url = path;
    EXPECT_EQ(AppInventory({}).read(path), expected);
}

const PlistStrings notes { { "CFBundleIdentifier", "org.example.notes" }, { "CFBundleName", "Notes" },
    { "CFBundleShortVersionString", "2.1" }, { "CFBundleVersion", "210" } };

PlistStrings plus(PlistStrings base, PlistStrings more)
{
    base.insert(base.end(), more.begin(), more.end());
    return base;
}

INSTANTIATE_TEST_SUITE_P(Rules, AppInventoryReadTest,
    testing::Values(
        ReadCase { "Plain", notes, {}, bundle("Notes", "org.example.notes", "2.1", "210") },
        ReadCase { "DisplayNameWins", plus(notes, { { "CFBundleDisplayName", "My Notes" } }), {},
            bundle("My Notes", "org.example.notes", "2.1", "210") },
        ReadCase { "EmptyDisplayNameFallsToName", plus(notes, { { "CFBundleDisplayName", "" } }), {},
            bundle("Notes", "org.example.notes", "2.1", "210") },
        ReadCase { "NoNamesUseTheFileName", { { "CFBundleIdentifier", "org.example.x" }, { "CFBundleName", "" } }, {},
            bundle("Fixture", "org.example.x", "", "") },
        ReadCase { "MissingShortVersionUsesTheBuild", { { "CFBundleIdentifier", "a.b" }, { "CFBundleVersion", "77" } }, {},
            bundle("Fixture", "a.b", "77", "77") },
        ReadCase { "EmptyShortVersionStaysEmpty", { { "CFBundleIdentifier", "a.b" }, { "CFBundleShortVersionString", "" },
            { "CFBundleVersion", "77" } }, {}, bundle("Fixture", "a.b", "", "77") },
        ReadCase { "NoIdentifier", { { "CFBundleName", "Notes" } }, {}, std::nullopt },
        ReadCase { "EmptyIdentifier", { { "CFBundleIdentifier", "" } }, {}, std::nullopt },
        ReadCase { "OwnApplicationRefused", { { "CFBundleIdentifier", "com.quillmar.helper" } }, {}, std::nullopt },
        ReadCase { "OwnApplicationRefusedInAnyCase", { { "CFBundleIdentifier", "COM.QUILLMAR.Agent" } }, {}, std::nullopt },
        ReadCase { "SimilarIdentifierListed", { { "CFBundleIdentifier", "com.quillmarket.shop" } }, {},
            bundle("Fixture", "com.quillmarket.shop", "", "") },
        ReadCase { "FeedIsTrimmed", plus(notes, { { "SUFeedURL", "\n  https://example.com/appcast.xml \t\n" } }), {},
            withFeed(bundle("Notes", "org.example.notes", "2.1", "210"), "https://example.com/appcast.xml") },
        ReadCase { "PlainHttpFeedIsInsecure", plus(notes, { { "SUFeedURL", "http://example.com/appcast.xml" } }), {},
            insecure(bundle("Notes", "org.example.notes", "2.1", "210")) },
        ReadCase { "LocalFeedIsInsecure", plus(notes, { { "SUFeedURL", "https://localhost/appcast.xml" } }), {},
            insecure(bundle("Notes", "org.example.notes", "2.1", "210")) },
        ReadCase { "BlankFeedIsNoFeed", plus(notes, { { "SUFeedURL", "   " } }), {}, bundle("Notes", "org.example.notes", "2.1", "210") },
        ReadCase { "RelativeFeedIsNoFeed", plus(notes, { { "SUFeedURL", "appcast.xml" } }), {},
            bundle("Notes", "org.example.notes", "2.1", "210") },
        ReadCase { "ReceiptMeansAppStore", notes, { { "Contents/_MASReceipt/receipt", "receipt" } },
            fromStore(bundle("Notes", "org.example.notes", "2.1", "210")) },
        ReadCase { "ReceiptFolderAloneIsNotEnough", notes, { { "Contents/_MASReceipt/other", "x" } },
            bundle("Notes", "org.example.notes", "2.1", "210") },
        ReadCase { "ElectronGitHub", notes, { { "Contents/Resources/app-update.yml", "provider: github\nowner: acme\nrepo: notes\n" } },
            withElectron(bundle("Notes", "org.example.notes", "2.1", "210"),
                "https://github.com/acme/notes/releases/latest/download/latest-mac.yml",
                "https://github.com/acme/notes/releases/latest") },
        ReadCase { "ElectronUnusableConfigIsNone", notes, { { "Contents/Resources/app-update.yml", "provider: s3\n" } },
            bundle("Notes", "org.example.notes", "2.1", "210") }),
    [](const auto& row) { return std::string(row.param.name); });

class AppInventoryTest : public testing::Test {
protected:
    std::filesystem::path root() const { return m_folder.path() / "Applications"; }

    void app(const std::filesystem::path& path, const std::string& name, const std::string& identifier = {})
    {
        makeBundle(path, xmlInfoPlist({ { "CFBundleIdentifier", identifier.empty() ? "org.example." + name : identifier },
            { "CFBundleName", name } }));
    }

    std::vector<std::string> scannedNames(std::vector<std::filesystem::path> roots) const
    {
        std::vector<std::string> names;
        for (const auto& found : AppInventory(std::move(roots)).scan())
            names.push_back(found.name);
        return names;
    }

    TemporaryFolder m_folder;
};

TEST_F(AppInventoryTest, WrappedApplicationIsFromTheStore)
{
    writeFixtureFile(root() / "Game.app" / "Wrapper" / "Game.app" / "Info.plist",
        binaryPropertyList(PropertyValue(PropertyValue::Dictionary { { "CFBundleIdentifier", "com.example.game" },
            { "CFBundleShortVersionString", "3.0" }, { "CFBundleVersion", "300" } })));
    auto found = AppInventory({}).read(root() / "Game.app");
    ASSERT_TRUE(found.has_value());
    EXPECT_TRUE(found->isWrappediOSApp);
    EXPECT_TRUE(found->isAppStore);
    EXPECT_EQ(found->name, "Game"); // the outer bundle's file name
    EXPECT_EQ(found->shortVersion, "3.0");
}

TEST_F(AppInventoryTest, LooksThreeLevelsBelowEachRoot)
{
    app(root() / "One.app", "One");
    app(root() / "a" / "Two.app", "Two");
    app(root() / "a" / "b" / "Three.app", "Three");
    app(root() / "a" / "b" / "c" / "Four.app", "Four");
    EXPECT_EQ(scannedNames({ root() }), (std::vector<std::string> { "One", "Three", "Two" }));
}

TEST_F(AppInventoryTest, NeverEntersPackages)
{
    app(root() / "Outer.app", "Outer");
    app(root() / "Outer.app" / "Contents" / "Helpers" / "Helper.app", "Helper");
    // A folder with a bundle's layout is a package whatever its name.
    app(root() / "Suite" / "Contents" / "Helper2.app", "Helper2");
    writeFixtureFile(root() / "Suite" / "Contents" / "Info.plist", xmlInfoPlist({ { "CFBundleIdentifier", "x.y" } }));
    app(root() / "Kit.framework" / "Versions" / "Inner.app", "Inner");
    app(root() / "Tools" / "Real.app", "Real");
    EXPECT_EQ(scannedNames({ root() }), (std::vector<std::string> { "Outer", "Real" }));
}

TEST_F(AppInventoryTest, SkipsHiddenEntriesAndSymbolicLinks)
{
    app(root() / ".Hidden.app", "Hidden");
    app(root() / ".cache" / "Cached.app", "Cached");
    app(m_folder.path() / "Elsewhere" / "Linked.app", "Linked");
    app(m_folder.path() / "Elsewhere" / "Deeper" / "Behind.app", "Behind");
    std::filesystem::create_directory_symlink(m_folder.path() / "Elsewhere" / "Linked.app", root() / "Linked.app");
    std::filesystem::create_directory_symlink(m_folder.path() / "Elsewhere" / "Deeper", root() / "Deeper");
    app(root() / "Visible.app", "Visible");
    EXPECT_EQ(scannedNames({ root() }), (std::vector<std::string> { "Visible" }));
}

TEST_F(AppInventoryTest, OneEntryPerStandardisedPath)
{
    app(root() / "Notes.app", "Notes");
    app(root() / "sub" / "Other.app", "Other");
    auto found = AppInventory({ root(), root() / "." / "sub" / "..", root() / "sub" }).scan();
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].url, root() / "Notes.app");
    EXPECT_EQ(found[1].url, root() / "sub" / "Other.app");
}

TEST_F(AppInventoryTest, SortsByNameIgnoringCaseWithAccents)
{
    for (const auto* name : { "zebra", "\xC3\x89mile", "apple", "Banana", "eagle", "Zoo" })
        app(root() / (std::string(name) + ".app"), name, std::string("org.example.") + std::to_string(std::hash<std::string> {}(name)));
    EXPECT_EQ(scannedNames({ root() }),
        (std::vector<std::string> { "apple", "Banana", "eagle", "\xC3\x89mile", "zebra", "Zoo" }));
}

TEST_F(AppInventoryTest, RootsThatCannotBeReadAreSkipped)
{
    app(root() / "Notes.app", "Notes");
    writeFixtureFile(m_folder.path() / "file-not-folder", "x");
    EXPECT_EQ(scannedNames({ m_folder.path() / "missing", m_folder.path() / "file-not-folder", root() }),
        std::vector<std::string> { "Notes" });
}

TEST_F(AppInventoryTest, UnusableBundlesAreLeftOut)
{
    app(root() / "Good.app", "Good");
    writeFixtureFile(root() / "Broken.app" / "Contents" / "Info.plist", "not a property list");
    std::filesystem::create_directories(root() / "Empty.app");
    app(root() / "Own.app", "Own", "com.quillmar.menu");
    EXPECT_EQ(scannedNames({ root() }), std::vector<std::string> { "Good" });
}

TEST(AppInventoryRootsTest, DefaultRootsAreSystemThenHome)
{
    EXPECT_EQ(AppInventory::defaultRoots("/Users/ann"),
        (std::vector<std::filesystem::path> { "/Applications", "/Users/ann/Applications" }));
}

} // namespace
} // namespace quillmar
