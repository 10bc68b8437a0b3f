#include <gtest/gtest.h>

#include "core/clipboard/ClipHistoryFile.h"

namespace quillmar {
namespace {

ClipItem fullItem()
{
    ClipItem item;
    item.id = "E621E1F8-C36C-495A-93FC-0C247A3E6E5F";
    item.kind = ClipKind::image;
    item.imageFile = "E621E1F8-C36C-495A-93FC-0C247A3E6E5F.png";
    item.imageSize = PixelSize { 640, 480 };
    item.date = historyDate(WallTime(std::chrono::milliseconds(1'767'225'600'123)));
    item.isPinned = true;
    item.sourceBundleID = "com.example.paint";
    item.sourceName = "Paint";
    item.imageBytes = 12345;
    item.imageHash = "0123456789abcdef";
    return item;
}

TEST(ClipHistoryFile, RoundTripsEveryField)
{
    ClipItem text;
    text.id = "B";
    text.kind = ClipKind::files;
    text.filePaths = std::vector<std::string> { "/Users/me/a b.txt", "/tmp/ü.pdf" };
    text.text = "two files";
    text.date = historyDate(WallTime(std::chrono::seconds(-5)));
    std::vector<ClipItem> items { fullItem(), text };

    auto decoded = ClipHistoryFile::decode(ClipHistoryFile::encode(items));
    ASSERT_TRUE(decoded) << decoded.error().message;
    EXPECT_EQ(decoded->dropped, 0u);
    EXPECT_EQ(decoded->items, items);
}

TEST(ClipHistoryFile, UsesTheDocumentedKeyNames)
{
    auto json = nlohmann::json::parse(ClipHistoryFile::encode({ fullItem() }));
    ASSERT_TRUE(json.is_array());
    const auto& record = json[0];
    for (const char* key : { "id", "kind", "imageFile", "imageSize", "date", "isPinned", "sourceBundleID", "sourceName",
             "imageBytes", "imageHash" })
        EXPECT_TRUE(record.contains(key)) << key;
    EXPECT_EQ(record["kind"], "image");
    EXPECT_DOUBLE_EQ(record["date"].get<double>(), 1'767'225'600.123);
}

TEST(ClipHistoryFile, RefusesWhatIsNotAList)
{
    for (const char* text : { "", "{", "{\"id\":\"a\"}", "null", "[1,2", "\"text\"" })
        EXPECT_FALSE(ClipHistoryFile::decode(text)) << text;
    auto empty = ClipHistoryFile::decode("[]");
    ASSERT_TRUE(empty);
    EXPECT_TRUE(empty->items.empty());
}

TEST(ClipHistoryFile, DropsUnreadableEntriesAndKeepsTheRest)
{
    auto decoded = ClipHistoryFile::decode(R"([
        {"id":"good","kind":"text","text":"hi","date":1700000000,"isPinned":"yes"},
        {"id":"noKind","text":"hi","date":1700000000},
        {"id":"oddKind","kind":"sound","date":1700000000},
        {"id":"noDate","kind":"text"},
        {"id":"escape","kind":"image","imageFile":"../../.ssh/id_rsa","date":1700000000},
        {"id":"slash","kind":"image","imageFile":"/etc/passwd","date":1700000000},
        {"id":"good","kind":"text","text":"again","date":1700000001},
        {"id":"","kind":"text","date":1700000000},
        {"id":"huge","kind":"text","date":1e300},
        {"id":"farFuture","kind":"text","date":17167225300},
        42,
        {"id":"typed","kind":"files","filePaths":["/a",3,"/b"],"imageSize":{"width":"1"},"sourceName":7,"date":1700000000}
    ])");
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->dropped, 10u);
    ASSERT_EQ(decoded->items.size(), 2u);
    EXPECT_EQ(decoded->items[0].id, "good");
    EXPECT_FALSE(decoded->items[0].isPinned) << "a flag of the wrong type reads as false";
    EXPECT_EQ(decoded->items[1].filePaths, (std::vector<std::string> { "/a", "/b" }));
    EXPECT_FALSE(decoded->items[1].imageSize);
    EXPECT_FALSE(decoded->items[1].sourceName);
}

TEST(ClipHistoryFile, BrokenUtf8IsReplacedNotFatal)
{
    ClipItem item;
    item.id = "x";
    item.text = std::string("ab\xff\xfe");
    auto decoded = ClipHistoryFile::decode(ClipHistoryFile::encode({ item }));
    ASSERT_TRUE(decoded);
    ASSERT_EQ(decoded->items.size(), 1u);
    EXPECT_EQ(decoded->items[0].text->substr(0, 2), "ab");
}

} // namespace
} // namespace quillmar
