#include "tests/clipboard/ClipboardStoreFixture.h"

#include <fstream>

namespace quillmar {
namespace {

using std::chrono::milliseconds;

class ClipboardTimingTest : public testing::Test, protected ClipboardStoreFixture {
protected:
    void advance(Duration duration) { m_runtime.advance(duration); }
};

TEST_F(ClipboardTimingTest, PollsEveryHalfSecond)
{
    start();
    advance(milliseconds(100));
    m_pasteboard.copyText("a");
    advance(milliseconds(399));
    EXPECT_TRUE(store().items().empty()) << "nothing is read between ticks";
    advance(milliseconds(1));
    EXPECT_EQ(texts(), (std::vector<std::string> { "a" }));

    store().stop();
    m_pasteboard.copyText("while stopped");
    advance(std::chrono::seconds(2));
    EXPECT_EQ(store().items().size(), 1u);
    start();
    tick();
    EXPECT_EQ(store().items().size(), 1u) << "a copy made while stopped is not picked up later";
}

TEST_F(ClipboardTimingTest, SavesPointEightSecondsAfterTheLastChange)
{
    start();
    m_pasteboard.copyText("a");
    tick(); // recorded at 0.5 s
    m_pasteboard.copyText("b");
    tick(); // recorded at 1.0 s: the save moves to 1.8 s
    advance(milliseconds(799));
    EXPECT_FALSE(historySaved());
    advance(milliseconds(1));
    ASSERT_TRUE(historySaved());
    EXPECT_EQ(savedHistory().size(), 2u);
}

TEST_F(ClipboardTimingTest, FlushWritesPendingChangesAtOnce)
{
    start();
    m_pasteboard.copyText("a");
    tick();
    EXPECT_FALSE(historySaved());
    store().flush();
    ASSERT_TRUE(historySaved());
    EXPECT_EQ(savedHistory()[0]["text"], "a");
    auto written = std::filesystem::last_write_time(historyFile());
    advance(std::chrono::seconds(2));
    EXPECT_EQ(std::filesystem::last_write_time(historyFile()), written) << "the debounced save was cancelled";
}

TEST_F(ClipboardTimingTest, APendingSaveIsWrittenWhenTheStoreGoes)
{
    start();
    m_pasteboard.copyText("a");
    tick();
    m_store.reset();
    m_runtime.runUntilIdle();
    ASSERT_TRUE(historySaved());
    EXPECT_EQ(savedHistory()[0]["text"], "a");
}

TEST_F(ClipboardTimingTest, AnImageThatCannotBeWrittenLeavesNoItemNamingIt)
{
    start();
    // A file where the folder should be: nothing can be written into it.
    std::ofstream(folder()) << "x";
    m_pasteboard.copy({ "public.png" }, {}, {}, PasteboardImage { "PNGDATA", "public.png", { 1, 1 } });
    tick();
    advance(ClipboardStore::saveDelay);
    EXPECT_TRUE(store().items().empty());

    m_pasteboard.copyText("text needs no file");
    tick();
    EXPECT_EQ(texts(), (std::vector<std::string> { "text needs no file" }));
}

TEST_F(ClipboardTimingTest, AReadThatTakesTooLongIsDropped)
{
    start();
    m_pasteboard.readDelay = std::chrono::seconds(3);
    m_pasteboard.copyText("slow");
    tick();
    advance(std::chrono::seconds(4));
    EXPECT_TRUE(store().items().empty());
    EXPECT_FALSE(store().isReading());

    m_pasteboard.readDelay = ClipboardStore::readTimeout - milliseconds(100);
    m_pasteboard.copyText("slow but in time");
    tick();
    advance(std::chrono::seconds(2));
    EXPECT_EQ(texts(), (std::vector<std::string> { "slow but in time" }));
}

// Each row acts while a slow read of "before" (copied in the editor) is out; `recorded` is the history
// afterwards, newest first, with each item's source.
struct SlowReadRow {
    const char* name;
    bool beforeTheReadTakesTheContents;
    std::function<void(ClipboardStoreFixture&)> meanwhile;
    std::vector<std::pair<std::string, std::string>> recorded;
};

class ClipboardSlowRead : public testing::TestWithParam<SlowReadRow>, protected ClipboardStoreFixture { };

TEST_P(ClipboardSlowRead, JudgesEachCopyByTheApplicationsInFrontWhenItHappened)
{
    settings().set(ClipboardSettings::excludedApps, { "com.example.vault" });
    start();
    m_pasteboard.readDelay = std::chrono::seconds(1);
    auto& hook = GetParam().beforeTheReadTakesTheContents ? m_pasteboard.beforeTaking : m_pasteboard.afterTaking;
    hook = [this] { GetParam().meanwhile(*this); };
    m_pasteboard.copyText("before");
    tick();
    m_runtime.advance(std::chrono::seconds(5));
    std::vector<std::pair<std::string, std::string>> recorded;
    for (const auto& item : store().items())
        recorded.emplace_back(item.text.value_or("?"), item.sourceName.value_or("?"));
    EXPECT_EQ(recorded, GetParam().recorded);
}

INSTANTIATE_TEST_SUITE_P(Sources, ClipboardSlowRead,
    testing::Values(
        SlowReadRow { "SecretCopiedInAnExcludedApplication", false,
            [](auto& f) {
                f.m_front.activate({ "com.example.vault", "Vault" });
                f.m_pasteboard.copyText("secret");
                f.m_front.activate({ "com.example.editor", "Editor" });
            },
            { { "before", "Editor" } } },
        SlowReadRow { "SecretCopiedBeforeTheReadTookTheContents", true,
            [](auto& f) {
                f.m_front.activate({ "com.example.vault", "Vault" });
                f.m_pasteboard.copyText("secret");
                f.m_front.activate({ "com.example.editor", "Editor" });
            },
            {} },
        SlowReadRow { "CopiedAndThenSwitchedAway", false,
            [](auto& f) {
                f.m_pasteboard.copyText("after");
                f.m_front.activate({ "com.example.terminal", "Terminal" });
            },
            { { "after", "Editor" }, { "before", "Editor" } } }),
    [](const testing::TestParamInfo<SlowReadRow>& row) { return std::string(row.param.name); });

TEST_F(ClipboardTimingTest, ExpiredItemsGoAtTheHourlySweepExceptPins)
{
    settings().set(ClipboardSettings::retentionDays, 1);
    start();
    for (const char* text : { "old pinned", "old" }) {
        m_pasteboard.copyText(text);
        tick();
    }
    store().togglePin(store().items()[1].id);
    m_runtime.setWallTime(m_runtime.clock().now() + std::chrono::hours(23));
    m_pasteboard.copyText("recent");
    tick();
    EXPECT_EQ(store().items().size(), 3u) << "nothing is a day old yet";

    m_runtime.setWallTime(m_runtime.clock().now() + std::chrono::hours(2));
    tick();
    EXPECT_EQ(texts(), (std::vector<std::string> { "recent", "old pinned" }));
    ASSERT_TRUE(store().lastSweep());
    EXPECT_EQ(*store().lastSweep(), m_runtime.clock().now());
}

TEST_F(ClipboardTimingTest, OrphanImagesAreSweptHourlyAndTheKeptAsideHistoryStays)
{
    std::filesystem::create_directories(folder());
    std::ofstream(folder() / "stray.png") << "x";
    std::ofstream(folder() / "history.json.unreadable-20260101T000000Z") << "kept";
    start();
    tick();
    EXPECT_FALSE(std::filesystem::exists(folder() / "stray.png"));
    EXPECT_TRUE(std::filesystem::exists(folder() / "history.json.unreadable-20260101T000000Z"));

    std::ofstream(folder() / "stray2.png") << "x";
    advance(std::chrono::minutes(59));
    EXPECT_TRUE(std::filesystem::exists(folder() / "stray2.png"));
    advance(std::chrono::minutes(2));
    EXPECT_FALSE(std::filesystem::exists(folder() / "stray2.png"));
}

TEST_F(ClipboardTimingTest, ImagesAreWrittenBeforeAndRemovedAfterTheHistoryThatNamesThem)
{
    start();
    m_pasteboard.copy({ "public.png" }, {}, {}, PasteboardImage { "PNGDATA", "public.png", { 10, 20 } });
    tick();
    ASSERT_EQ(store().items().size(), 1u);
    auto item = store().items()[0];
    ASSERT_TRUE(item.imageFile);
    EXPECT_EQ(*item.imageFile, item.id + ".png");
    EXPECT_EQ(item.imageBytes, 7);
    EXPECT_EQ(item.imageSize, (PixelSize { 10, 20 }));
    EXPECT_TRUE(std::filesystem::exists(folder() / *item.imageFile));
    EXPECT_FALSE(historySaved()) << "the image is on disk first";
    auto image = store().image(item);
    ASSERT_TRUE(image) << image.error().message;
    EXPECT_EQ(*image, "PNGDATA");

    m_pasteboard.copy({ "public.png" }, {}, {}, PasteboardImage { "PNGDATA", "public.png", { 10, 20 } });
    tick();
    EXPECT_EQ(store().items().size(), 1u) << "the same image is recognised by its hash";

    store().remove(item.id);
    EXPECT_TRUE(std::filesystem::exists(folder() / *item.imageFile)) << "still named by the history on disk";
    advance(ClipboardStore::saveDelay);
    EXPECT_TRUE(savedHistory().empty());
    EXPECT_FALSE(std::filesystem::exists(folder() / *item.imageFile));
}

TEST_F(ClipboardTimingTest, UsingAnImageItemPutsItsBytesBack)
{
    start();
    m_pasteboard.copy({ "public.tiff" }, {}, {}, PasteboardImage { "TIFF", "public.tiff", { 1, 1 } });
    tick();
    ASSERT_TRUE(store().use(store().items()[0].id, Paste::no));
    ASSERT_TRUE(m_pasteboard.writes.back().image);
    EXPECT_EQ(*m_pasteboard.writes.back().image, (PasteboardImage { "TIFF", "public.tiff", { 1, 1 } }));
}

TEST_F(ClipboardTimingTest, AutoClearEmptiesTheClipboardAfterTheLastCopyAndKeepsHistory)
{
    settings().set(ClipboardSettings::autoClearSeconds, 5);
    start();
    m_pasteboard.copyText("password-ish");
    tick(); // seen at 0.5 s
    advance(milliseconds(4000));
    EXPECT_EQ(m_pasteboard.clears, 0);
    m_pasteboard.copyText("a later copy restarts the wait");
    tick(); // seen at 5.0 s
    advance(milliseconds(4500));
    EXPECT_EQ(m_pasteboard.clears, 0);
    advance(milliseconds(500));
    EXPECT_EQ(m_pasteboard.clears, 1);
    EXPECT_EQ(store().items().size(), 2u);
    advance(std::chrono::seconds(30));
    EXPECT_EQ(m_pasteboard.clears, 1) << "an empty clipboard is not cleared again";
    EXPECT_EQ(store().items().size(), 2u);
}

TEST_F(ClipboardTimingTest, MinutesCountWhenSecondsAreOff)
{
    settings().set(ClipboardSettings::autoClearMinutes, 1);
    start();
    m_pasteboard.copyText("x");
    tick();
    advance(std::chrono::seconds(59));
    EXPECT_EQ(m_pasteboard.clears, 0);
    advance(std::chrono::seconds(1));
    EXPECT_EQ(m_pasteboard.clears, 1);
}

TEST_F(ClipboardTimingTest, SleepAndLockClearWhenAsked)
{
    start();
    EXPECT_FALSE(m_session.isObserved());
    settings().set(ClipboardSettings::clearOnLock, true);
    m_runtime.runUntilIdle();
    ASSERT_TRUE(m_session.isObserved());
    m_session.send(SessionEvent::systemWillSleep);
    EXPECT_EQ(m_pasteboard.clears, 0) << "sleep clears only with its own setting";
    m_session.send(SessionEvent::screenLocked);
    EXPECT_EQ(m_pasteboard.clears, 1);

    settings().set(ClipboardSettings::clearOnSleep, true);
    m_runtime.runUntilIdle();
    m_session.send(SessionEvent::displayDidSleep);
    EXPECT_EQ(m_pasteboard.clears, 2);

    store().stop();
    EXPECT_FALSE(m_session.isObserved()) << "stopping removes the auto-clear observers";
}

TEST_F(ClipboardTimingTest, ClearingTheSystemClipboardIsNotACopy)
{
    start();
    m_pasteboard.copyText("x");
    tick();
    store().clearSystem();
    auto reads = m_pasteboard.reads;
    tick();
    EXPECT_EQ(m_pasteboard.reads, reads);
    EXPECT_EQ(store().items().size(), 1u);
}

} // namespace
} // namespace quillmar
