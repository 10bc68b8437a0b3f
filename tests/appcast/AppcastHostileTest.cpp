#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "core/appcast/Appcast.h"
#include "core/appcast/AppcastReader.h"
#include "core/base/Files.h"
#include "tests/appcast/AppcastTestSupport.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

std::string fixture(const std::string& name)
{
    auto text = readFile(std::filesystem::path(QUILLMAR_APPCAST_FIXTURES) / name);
    EXPECT_TRUE(text.ok() && text->has_value()) << name;
    return text.ok() && text->has_value() ? **text : std::string();
}

std::string repeated(std::string_view piece, std::size_t count)
{
    std::string text;
    text.reserve(piece.size() * count);
    for (std::size_t index = 0; index < count; ++index)
        text += piece;
    return text;
}

TEST(AppcastHostileTest, RefusedDocuments)
{
    for (const char* name : {
             "billion-laughs.xml", // entity expansion
             "internal-entity.xml", // even a harmless one: no appcast declares entities
             "external-entity.xml", // file:///etc/passwd, never read
             "parameter-entity.xml",
             "unparsed-entity.xml",
             "malformed.xml", // mismatched end tag
             "undeclared-prefix.xml", // "sparkle:" without its namespace declaration is malformed with namespaces
         }) {
        EXPECT_FALSE(Appcast::parse(fixture(name)).has_value()) << name;
    }
}

TEST(AppcastHostileTest, TheSampleFixtureIsAccepted)
{
    // The fixtures differ from this one only in what makes them hostile.
    auto items = Appcast::parse(fixture("sample.xml"));
    ASSERT_TRUE(items.has_value());
    EXPECT_EQ(items->size(), 3u);
}

TEST(AppcastHostileTest, MalformedBytes)
{
    for (const auto& [name, bytes] : std::initializer_list<std::pair<const char*, std::string>> {
             { "empty", "" },
             { "not XML", "{\"items\": []}" },
             { "truncated", feedWithItems("<item><title>A</title></item>").substr(0, 120) },
             { "two roots", "<rss></rss><rss></rss>" },
             { "invalid UTF-8 in text", feedWithItems("<item><title>\xff\xfe</title></item>") },
             { "NUL byte", std::string("<rss>\0</rss>", 12) },
             { "undefined entity", feedWithItems("<item><title>&nope;</title></item>") },
             { "unbound attribute prefix", feedWithItems("<item><enclosure x:url=\"https://example.com/\"/></item>") },
         }) {
        EXPECT_FALSE(Appcast::parse(bytes).has_value()) << name;
    }
}

TEST(AppcastHostileTest, ExternalSubsetIsNeverRead)
{
    // A DTD beside the document that, if it were read, would define the entity with the file's secret.
    TemporaryFolder folder;
    auto dtd = folder.path() / "evil.dtd";
    ASSERT_TRUE(writeFileAtomically(dtd, "<!ENTITY secret \"leaked\">").ok());
    auto document = "<?xml version=\"1.0\"?>\n<!DOCTYPE rss SYSTEM \"file://" + dtd.string() + "\">\n"
        + feedWithItems("<item><title>[&secret;]</title></item>").substr(std::string("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n").size());
    auto items = Appcast::parse(document);
    ASSERT_TRUE(items.has_value());
    ASSERT_EQ(items->size(), 1u);
    EXPECT_EQ((*items)[0].title, "[]");
}

std::string nested(int depth)
{
    return repeated("<a>", static_cast<std::size_t>(depth)) + repeated("</a>", static_cast<std::size_t>(depth));
}

TEST(AppcastHostileTest, NestingDepth)
{
    EXPECT_EQ(AppcastReader::maximumDepth, 32);
    EXPECT_TRUE(Appcast::parse(nested(32)).has_value());
    EXPECT_FALSE(Appcast::parse(nested(33)).has_value());
    EXPECT_FALSE(Appcast::parse(nested(100000)).has_value());
    // Depth counts levels open at once, not elements seen.
    EXPECT_TRUE(Appcast::parse("<r>" + repeated(nested(31), 50) + "</r>").has_value());
}

TEST(AppcastHostileTest, ItemCount)
{
    const std::string item = "<item><title>T</title></item>\n";
    auto fourThousand = Appcast::parse(feedWithItems(repeated(item, 4000)));
    ASSERT_TRUE(fourThousand.has_value());
    EXPECT_EQ(fourThousand->size(), 4000u);
    EXPECT_FALSE(Appcast::parse(feedWithItems(repeated(item, 4001))).has_value());
    // Blank items are not collected, so they do not count.
    EXPECT_TRUE(Appcast::parse(feedWithItems("<item/>" + repeated(item, 4000))).has_value());
    EXPECT_FALSE(Appcast::parse(feedWithItems(repeated(item, 4000) + "<item/>")).has_value());
}

TEST(AppcastHostileTest, TextIsCappedPerElement)
{
    struct Row {
        const char* name;
        std::string character;
        std::size_t count;
        std::size_t expectedLength; // bytes
    };
    for (const auto& row : {
             Row { "ASCII below the cap", "a", 199999, 199999 },
             Row { "ASCII at the cap", "a", 200000, 200000 },
             Row { "ASCII above the cap", "a", 500000, 200000 },
             Row { "two-byte characters count once", "\u00e9", 300000, 400000 },
             Row { "four-byte characters count once", "\U0001F600", 250000, 800000 },
         }) {
        auto items = Appcast::parse(feedWithItems("<item><title>" + repeated(row.character, row.count) + "</title>"
            + "<description><![CDATA[" + repeated(row.character, row.count) + "]]></description></item>"));
        ASSERT_TRUE(items.has_value()) << row.name;
        ASSERT_EQ(items->size(), 1u) << row.name;
        EXPECT_EQ((*items)[0].title->size(), row.expectedLength) << row.name;
        EXPECT_EQ((*items)[0].notesHTML->size(), row.expectedLength) << row.name;
    }
}

} // namespace
} // namespace quillmar
