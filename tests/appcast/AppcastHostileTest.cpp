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

// "ok", or what was wrong: "refused", "malformed" or "tooLarge".
std::string outcome(const ParseResult<std::vector<AppcastItem>>& result)
{
    if (result.ok())
        return "ok";
    switch (result.problem()) {
    case ParseProblem::refused:
        return "refused";
    case ParseProblem::malformed:
        return "malformed";
    case ParseProblem::tooLarge:
        return "tooLarge";
    }
    return "?";
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
    for (const auto& [name, expected] : std::initializer_list<std::pair<const char*, const char*>> {
             { "billion-laughs.xml", "refused" }, // entity expansion
             { "internal-entity.xml", "refused" }, // even a harmless one: no appcast declares entities
             { "external-entity.xml", "refused" }, // file:///etc/passwd, never read
             { "parameter-entity.xml", "refused" },
             { "unparsed-entity.xml", "refused" },
             { "malformed.xml", "malformed" }, // mismatched end tag
             { "undeclared-prefix.xml", "malformed" }, // "sparkle:" without its namespace declaration, read with namespaces
         }) {
        EXPECT_EQ(outcome(Appcast::parse(fixture(name))), expected) << name;
    }
}

TEST(AppcastHostileTest, TheSampleFixtureIsAccepted)
{
    // The fixtures differ from this one only in what makes them hostile.
    auto items = Appcast::parse(fixture("sample.xml"));
    ASSERT_TRUE(items.ok());
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
        EXPECT_EQ(outcome(Appcast::parse(bytes)), "malformed") << name;
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
    ASSERT_TRUE(items.ok());
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
    EXPECT_EQ(outcome(Appcast::parse(nested(32))), "ok");
    EXPECT_EQ(outcome(Appcast::parse(nested(33))), "tooLarge");
    EXPECT_EQ(outcome(Appcast::parse(nested(100000))), "tooLarge");
    // Depth counts levels open at once, not elements seen.
    EXPECT_EQ(outcome(Appcast::parse("<r>" + repeated(nested(31), 50) + "</r>")), "ok");
}

TEST(AppcastHostileTest, ItemCount)
{
    const std::string item = "<item><title>T</title></item>\n";
    auto fourThousand = Appcast::parse(feedWithItems(repeated(item, 4000)));
    ASSERT_TRUE(fourThousand.ok());
    EXPECT_EQ(fourThousand->size(), 4000u);
    EXPECT_EQ(outcome(Appcast::parse(feedWithItems(repeated(item, 4001)))), "tooLarge");
    // Blank items are not collected, so they do not count.
    EXPECT_EQ(outcome(Appcast::parse(feedWithItems("<item/>" + repeated(item, 4000)))), "ok");
    EXPECT_EQ(outcome(Appcast::parse(feedWithItems(repeated(item, 4000) + "<item/>"))), "tooLarge");
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
        ASSERT_TRUE(items.ok()) << row.name;
        ASSERT_EQ(items->size(), 1u) << row.name;
        EXPECT_EQ((*items)[0].title->size(), row.expectedLength) << row.name;
        EXPECT_EQ((*items)[0].notesHTML->size(), row.expectedLength) << row.name;
    }
}

} // namespace
} // namespace quillmar
