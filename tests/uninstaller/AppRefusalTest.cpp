#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "core/uninstaller/AliasFile.h"
#include "core/uninstaller/AppRefusal.h"
#include "tests/apps/BundleFixture.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

namespace fs = std::filesystem;
using testing_support::makeBundle;
using testing_support::writeFixtureFile;
using testing_support::xmlInfoPlist;

// A classic resource file holding one resource of each type in `types` (four characters each).
std::string resourceFile(const std::vector<std::string>& types)
{
    auto put16 = [](std::string& bytes, std::uint32_t value) {
        bytes.push_back(static_cast<char>((value >> 8) & 0xFF));
        bytes.push_back(static_cast<char>(value & 0xFF));
    };
    auto put32 = [&put16](std::string& bytes, std::uint32_t value) {
        put16(bytes, value >> 16);
        put16(bytes, value & 0xFFFF);
    };
    const std::uint32_t dataOffset = 256;
    const std::uint32_t dataLength = 16;
    // A copy of the header, a handle, a file reference and attributes, then the two list offsets.
    std::string map(24, '\0');
    put16(map, 28); // the type list right after these two offsets
    put16(map, 0); // no names
    put16(map, static_cast<std::uint32_t>(types.size() - 1));
    for (const auto& type : types) {
        map += type;
        put16(map, 0);
        put16(map, 0);
    }
    std::string bytes;
    put32(bytes, dataOffset);
    put32(bytes, dataOffset + dataLength);
    put32(bytes, dataLength);
    put32(bytes, static_cast<std::uint32_t>(map.size()));
    bytes.resize(dataOffset + dataLength, '\0');
    return bytes + map;
}

class AppRefusalTest : public testing::Test {
protected:
    fs::path bundle(const std::string& relative, const std::optional<std::string>& identifier)
    {
        auto path = m_folder.path() / relative;
        if (identifier)
            makeBundle(path, xmlInfoPlist({ { "CFBundleIdentifier", *identifier }, { "CFBundleName", "Example" } }));
        else
            makeBundle(path, xmlInfoPlist({ { "CFBundleName", "Example" } }));
        return path;
    }

    TemporaryFolder m_folder;
};

struct RefusalRow {
    const char* name;
    fs::path path;
    std::optional<std::string_view> sentence;
};

TEST_F(AppRefusalTest, RulesApplyInOrder)
{
    auto good = bundle("Example.app", "com.example.App");
    fs::create_directory_symlink(good, m_folder.path() / "Linked.app");
    fs::create_directory_symlink(good, m_folder.path() / "Linked.txt");
    writeFixtureFile(m_folder.path() / "Bookmark.app", std::string(AliasFile::bookmarkMagic) + "rest of the bookmark");
    writeFixtureFile(m_folder.path() / "Classic.app", resourceFile({ "icns", "alis" }));
    writeFixtureFile(m_folder.path() / "Plain.app", "just a file called .app");
    bundle("Folder.txt", "com.example.Folder");
    auto nested = bundle("Outer.app/Contents/Library/LoginItems/Inner.app", std::nullopt);
    bundle("Anonymous.app", std::nullopt);
    bundle("Empty.app", "");
    bundle("Self.app", "COM.Quillmar.Quillmar");
    bundle("Safari.app", "com.apple.Safari");
    bundle("Updater.app", "org.sparkle-project.Sparkle.Updater");

    const RefusalRow rows[] = {
        { "symlinkedApp", m_folder.path() / "Linked.app", AppRefusal::alias },
        { "symlinkBeforeExtension", m_folder.path() / "Linked.txt", AppRefusal::alias },
        { "bookmarkAliasNamedApp", m_folder.path() / "Bookmark.app", AppRefusal::alias },
        { "resourceAliasNamedApp", m_folder.path() / "Classic.app", AppRefusal::alias },
        { "plainFileNamedAppHasNoIdentifier", m_folder.path() / "Plain.app", AppRefusal::noIdentifier },
        { "notAnApp", m_folder.path() / "Folder.txt", AppRefusal::notAnApp },
        { "systemPathBeforeExtension", "/System/Library/CoreServices/thing.txt", AppRefusal::notAnApp },
        { "system", "/System/Applications/Calculator.app", AppRefusal::system },
        { "appleLibrary", "/Library/Apple/System/Library/Tool.app", AppRefusal::system },
        { "systemBeforeNested", "/System/Outer.app/Contents/Inner.app", AppRefusal::system },
        { "nested", nested, AppRefusal::nested },
        { "noIdentifier", m_folder.path() / "Anonymous.app", AppRefusal::noIdentifier },
        { "emptyIdentifier", m_folder.path() / "Empty.app", AppRefusal::noIdentifier },
        { "missingBundle", m_folder.path() / "Missing.app", AppRefusal::noIdentifier },
        { "ownIdentifierAnyCase", m_folder.path() / "Self.app", AppRefusal::itself },
        { "protected", m_folder.path() / "Safari.app", AppRefusal::protectedApp },
        { "sharedUpdater", m_folder.path() / "Updater.app", AppRefusal::protectedApp },
        { "removable", good, std::nullopt },
        { "removableWithTrailingSlash", good.string() + "/", std::nullopt },
    };
    for (const auto& row : rows)
        EXPECT_EQ(AppRefusal::reason(row.path), row.sentence) << row.name;
}

struct AliasRow {
    const char* name;
    std::string bytes;
    bool isAlias;
};

TEST(AliasFileTest, RecognisedByContentOnly)
{
    auto truncatedMap = resourceFile({ "alis" });
    truncatedMap.resize(truncatedMap.size() - 6);
    auto lyingMapLength = resourceFile({ "alis" });
    lyingMapLength[15] = '\x7F';
    const AliasRow rows[] = {
        { "bookmark", std::string(AliasFile::bookmarkMagic), true },
        { "bookmarkWithoutPadding", "bookmark", false },
        { "resourceWithAlias", resourceFile({ "alis" }), true },
        { "aliasAmongOtherTypes", resourceFile({ "icns", "STR ", "alis" }), true },
        { "resourceWithoutAlias", resourceFile({ "icns" }), false },
        { "truncatedTypeList", truncatedMap, false },
        { "mapLengthPastTheEnd", lyingMapLength, false },
        { "empty", "", false },
        { "xmlPlist", "<?xml version=\"1.0\"?><plist/>", false },
    };
    for (const auto& row : rows)
        EXPECT_EQ(AliasFile::isAliasData(row.bytes), row.isAlias) << row.name;
}

} // namespace
} // namespace quillmar
