#include <gtest/gtest.h>

#include "core/apps/BundleInfo.h"
#include "tests/apps/BundleFixture.h"
#include "tests/apps/PropertyListWriter.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

using namespace testing_support;
using Dictionary = PropertyValue::Dictionary;
using Array = PropertyValue::Array;

class BundleInfoTest : public testing::Test {
protected:
    std::filesystem::path at(const std::string& name) const { return m_folder.path() / name; }

    TemporaryFolder m_folder;
};

TEST_F(BundleInfoTest, ReadsContentsInfoPlist)
{
    makeBundle(at("Notes.app"), xmlInfoPlist({ { "CFBundleIdentifier", "org.example.notes" }, { "CFBundleName", "Notes" } }));
    auto info = readBundleInfo(at("Notes.app"));
    ASSERT_TRUE(info.has_value());
    EXPECT_EQ(info->bundle, at("Notes.app"));
    EXPECT_EQ(info->infoPlist, at("Notes.app") / "Contents" / "Info.plist");
    EXPECT_FALSE(info->isWrapped);
    EXPECT_EQ(info->string("CFBundleName"), "Notes");
    EXPECT_EQ(info->string("Missing"), std::nullopt);
}

TEST_F(BundleInfoTest, ReadsBinaryInfoPlist)
{
    makeBundle(at("Bin.app"), binaryPropertyList(PropertyValue(Dictionary { { "CFBundleIdentifier", "org.example.bin" } })));
    auto info = readBundleInfo(at("Bin.app"));
    ASSERT_TRUE(info.has_value());
    EXPECT_EQ(info->string("CFBundleIdentifier"), "org.example.bin");
}

TEST_F(BundleInfoTest, WrapperFolderHoldsTheRealBundle)
{
    // Entries that are not bundles are passed over; of two bundles the first by name is taken.
    writeFixtureFile(at("Game.app") / "Wrapper" / "iTunesMetadata.plist", "<plist/>");
    writeFixtureFile(at("Game.app") / "Wrapper" / "Zed.app" / "Info.plist", xmlInfoPlist({ { "CFBundleName", "Zed" } }));
    writeFixtureFile(at("Game.app") / "Wrapper" / "Game.app" / "Info.plist", xmlInfoPlist({ { "CFBundleName", "Game" } }));
    auto info = readBundleInfo(at("Game.app"));
    ASSERT_TRUE(info.has_value());
    EXPECT_TRUE(info->isWrapped);
    EXPECT_EQ(info->infoPlist, at("Game.app") / "Wrapper" / "Game.app" / "Info.plist");
    EXPECT_EQ(info->string("CFBundleName"), "Game");
}

TEST_F(BundleInfoTest, ContentsWinsOverWrapper)
{
    makeBundle(at("Both.app"), xmlInfoPlist({ { "CFBundleName", "Outer" } }));
    writeFixtureFile(at("Both.app") / "Wrapper" / "Inner.app" / "Info.plist", xmlInfoPlist({ { "CFBundleName", "Inner" } }));
    auto info = readBundleInfo(at("Both.app"));
    ASSERT_TRUE(info.has_value());
    EXPECT_FALSE(info->isWrapped);
    EXPECT_EQ(info->string("CFBundleName"), "Outer");
}

struct UnusableCase {
    const char* name;
    std::string relativePath; // below the bundle; empty for no file at all
    std::string contents;
};

class BundleInfoUnusableTest : public BundleInfoTest, public testing::WithParamInterface<UnusableCase> { };

TEST_P(BundleInfoUnusableTest, YieldsNone)
{
    std::filesystem::create_directories(at("Broken.app"));
    if (!GetParam().relativePath.empty())
        writeFixtureFile(at("Broken.app") / GetParam().relativePath, GetParam().contents);
    EXPECT_FALSE(readBundleInfo(at("Broken.app")).has_value());
}

INSTANTIATE_TEST_SUITE_P(Cases, BundleInfoUnusableTest,
    testing::Values(
        UnusableCase { "NoPropertyList", "", "" },
        UnusableCase { "WrapperWithoutBundle", "Wrapper/Readme.txt", "hello" },
        UnusableCase { "WrappedBundleWithoutPropertyList", "Wrapper/Inner.app/Contents/Info.plist", xmlInfoPlist({ { "a", "b" } }) },
        UnusableCase { "EmptyDictionary", "Contents/Info.plist", xmlInfoPlist({}) },
        UnusableCase { "ArrayAtTheRoot", "Contents/Info.plist", "<plist><array><string>a</string></array></plist>" },
        UnusableCase { "Malformed", "Contents/Info.plist", "<plist><dict><key>a</key>" },
        UnusableCase { "EmptyFile", "Contents/Info.plist", "" }),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(BundleInfoTest, StringsReadsAStringOrTheStringsOfAnArray)
{
    makeBundle(at("List.app"), binaryPropertyList(PropertyValue(Dictionary {
        { "One", "solo" },
        { "Many", Array { "a", 7, "b", Array { "nested" } } },
        { "Number", 3 },
    })));
    auto info = readBundleInfo(at("List.app"));
    ASSERT_TRUE(info.has_value());
    EXPECT_EQ(info->strings("One"), std::vector<std::string> { "solo" });
    EXPECT_EQ(info->strings("Many"), (std::vector<std::string> { "a", "b" }));
    EXPECT_TRUE(info->strings("Number").empty());
    EXPECT_TRUE(info->strings("Missing").empty());
    EXPECT_EQ(info->string("Many"), std::nullopt);
}

} // namespace
} // namespace quillmar
