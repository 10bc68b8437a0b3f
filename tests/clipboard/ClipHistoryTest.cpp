#include <gtest/gtest.h>

#include "core/clipboard/ClipHistory.h"

namespace quillmar {
namespace {

WallTime at(int seconds)
{
    return WallTime(std::chrono::seconds(1'700'000'000 + seconds));
}

ClipItem textItem(std::string id, std::string text, int date = 0, bool pinned = false)
{
    ClipItem item;
    item.id = std::move(id);
    item.kind = ClipKind::text;
    item.text = std::move(text);
    item.date = at(date);
    item.isPinned = pinned;
    return item;
}

ClipItem filesItem(std::string id, std::vector<std::string> paths)
{
    ClipItem item;
    item.id = std::move(id);
    item.kind = ClipKind::files;
    item.filePaths = std::move(paths);
    return item;
}

ClipItem imageItem(std::string id, std::string hash)
{
    ClipItem item;
    item.id = std::move(id);
    item.kind = ClipKind::image;
    item.imageHash = std::move(hash);
    item.imageFile = item.id + ".png";
    return item;
}

std::vector<std::string> ids(const ClipHistory& history)
{
    std::vector<std::string> result;
    for (const auto& item : history.items())
        result.push_back(item.id);
    return result;
}

struct DedupeRow {
    const char* name;
    ClipItem first;
    ClipItem second;
    bool merged;
};

class ClipHistoryDedupe : public testing::TestWithParam<DedupeRow> { };

TEST_P(ClipHistoryDedupe, SameContentIsOneItem)
{
    const auto& row = GetParam();
    ClipHistory history;
    history.insert(row.first);
    history.insert(textItem("between", "something else"));
    auto insertion = history.insert(row.second);
    EXPECT_EQ(insertion.merged, row.merged);
    EXPECT_EQ(history.items().size(), row.merged ? 2u : 3u);
    EXPECT_EQ(history.items().front().id, row.merged ? row.first.id : row.second.id) << "the copy is on top either way";
}

INSTANTIATE_TEST_SUITE_P(Rules, ClipHistoryDedupe,
    testing::Values(
        DedupeRow { "SameText", textItem("a", "hello"), textItem("b", "hello"), true },
        DedupeRow { "TextDiffersInCase", textItem("a", "hello"), textItem("b", "Hello"), false },
        DedupeRow { "TextDiffersInWhitespace", textItem("a", "hello"), textItem("b", "hello "), false },
        DedupeRow { "SameFilesSameOrder", filesItem("a", { "/x", "/y" }), filesItem("b", { "/x", "/y" }), true },
        DedupeRow { "SameFilesOtherOrder", filesItem("a", { "/x", "/y" }), filesItem("b", { "/y", "/x" }), false },
        DedupeRow { "PathsThatJoinAlike", filesItem("a", { "/x", "y" }), filesItem("b", { "/xy" }), false },
        DedupeRow { "SameImageHash", imageItem("a", "00ff"), imageItem("b", "00ff"), true },
        DedupeRow { "OtherImageHash", imageItem("a", "00ff"), imageItem("b", "00fe"), false },
        DedupeRow { "TextAndFileOfSameSpelling", textItem("a", "/x"), filesItem("b", { "/x" }), false }),
    [](const testing::TestParamInfo<DedupeRow>& row) { return row.param.name; });

TEST(ClipHistory, RepeatedCopyMovesUpKeepingIdPinAndImage)
{
    ClipHistory history;
    auto pinned = imageItem("img", "abc");
    pinned.isPinned = true;
    pinned.date = at(0);
    history.insert(pinned);
    history.insert(textItem("t", "text", 5));
    auto again = imageItem("new", "abc");
    again.imageFile = "new.png";
    again.date = at(10);
    again.sourceName = "Preview";
    history.insert(again);

    ASSERT_EQ(ids(history), (std::vector<std::string> { "img", "t" }));
    const auto& top = history.items().front();
    EXPECT_TRUE(top.isPinned);
    EXPECT_EQ(top.imageFile, "img.png") << "the file already saved is kept";
    EXPECT_EQ(top.date, at(10));
    EXPECT_EQ(top.sourceName, "Preview");
}

TEST(ClipHistory, TrimKeepsTheLimitOfUnpinnedAndEveryPin)
{
    ClipHistory history;
    for (int index = 0; index < 15; ++index)
        history.insert(textItem("i" + std::to_string(index), "text " + std::to_string(index), index, index % 5 == 0));
    // Newest first: i14 … i0; pinned: i10, i5, i0.
    auto removed = history.trim(10);
    EXPECT_EQ(removed.size(), 2u);
    EXPECT_EQ(history.items().size(), 13u);
    for (const auto& item : removed)
        EXPECT_FALSE(item.isPinned);
    EXPECT_NE(history.find("i0"), nullptr) << "the oldest item is pinned and stays";
    EXPECT_EQ(history.find("i1"), nullptr);
    EXPECT_EQ(history.find("i2"), nullptr);
    EXPECT_NE(history.find("i3"), nullptr);
}

TEST(ClipHistory, RemovedContentCanBeCopiedAgain)
{
    ClipHistory history;
    history.insert(textItem("a", "hello"));
    history.remove("a");
    EXPECT_FALSE(history.insert(textItem("b", "hello")).merged);
    history.trim(0);
    EXPECT_FALSE(history.idWithContent(textItem("c", "hello")));
}

TEST(ClipHistory, DuplicatesFromAFileHandTheKeyOn)
{
    ClipHistory history;
    history.replaceAll({ textItem("new", "same"), textItem("old", "same") });
    EXPECT_EQ(history.idWithContent(textItem("x", "same")), "new") << "the newest of equal items is indexed";
    history.remove("new");
    EXPECT_EQ(history.idWithContent(textItem("x", "same")), "old");
}

TEST(ClipHistory, ExpiryAndClearLeavePins)
{
    ClipHistory history;
    history.replaceAll({ textItem("fresh", "a", 100), textItem("oldPinned", "b", 0, true), textItem("old", "c", 0) });
    auto expired = history.removeOlderThan(at(50));
    ASSERT_EQ(expired.size(), 1u);
    EXPECT_EQ(expired[0].id, "old");

    history.clear(KeepPinned::yes);
    EXPECT_EQ(ids(history), (std::vector<std::string> { "oldPinned" }));
    history.clear(KeepPinned::no);
    EXPECT_TRUE(history.items().empty());
}

TEST(ClipHistory, EditedTextIsIndexedUnderItsNewContent)
{
    ClipHistory history;
    history.insert(textItem("a", "https://x.test/?utm_source=y"));
    history.setText("a", "https://x.test/");
    EXPECT_EQ(history.idWithContent(textItem("b", "https://x.test/")), "a");
    EXPECT_FALSE(history.idWithContent(textItem("b", "https://x.test/?utm_source=y")));
}

} // namespace
} // namespace quillmar
