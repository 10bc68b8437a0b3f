#include "tests/clipboard/ClipboardStoreFixture.h"

#include <fstream>

#include "core/desktop/InputEvent.h"

namespace quillmar {
namespace {

class ClipboardStoreTest : public testing::Test, protected ClipboardStoreFixture { };

TEST_F(ClipboardStoreTest, RecordsACopyWithTheApplicationInFront)
{
    start();
    m_pasteboard.copyText("hello");
    tick();
    ASSERT_EQ(texts(), (std::vector<std::string> { "hello" }));
    const auto& item = store().items().front();
    EXPECT_EQ(item.kind, ClipKind::text);
    EXPECT_EQ(item.sourceBundleID, "com.example.editor");
    EXPECT_EQ(item.sourceName, "Editor");
    EXPECT_EQ(item.date, historyDate(m_runtime.clock().now()));
    EXPECT_EQ(item.id.size(), 36u);
}

TEST_F(ClipboardStoreTest, WhatWasOnThePasteboardBeforeStartIsNotRecorded)
{
    m_pasteboard.copyText("copied while not watching");
    start();
    tick();
    EXPECT_TRUE(store().items().empty());
}

TEST_F(ClipboardStoreTest, TwoChangesWithinOneTickRecordOnlyTheLast)
{
    start();
    m_pasteboard.copyText("first");
    m_pasteboard.copyText("second");
    tick();
    EXPECT_EQ(texts(), (std::vector<std::string> { "second" }));
}

TEST_F(ClipboardStoreTest, TheSameCopyAgainMovesTheItemUp)
{
    start();
    for (const char* text : { "a", "b", "a" }) {
        m_pasteboard.copyText(text);
        tick();
    }
    EXPECT_EQ(texts(), (std::vector<std::string> { "a", "b" }));
}

// Each row prepares the fixture and makes one copy; the copy must be skipped, and a plain copy after it
// recorded.
struct SkipRow {
    const char* name;
    std::function<void(ClipboardStoreFixture&)> copy;
    bool recorded;
};

class ClipboardSkips : public testing::TestWithParam<SkipRow>, protected ClipboardStoreFixture { };

TEST_P(ClipboardSkips, FollowsTheRule)
{
    settings().set(ClipboardSettings::excludedApps, { "com.example.vault" });
    start();
    GetParam().copy(*this);
    tick();
    EXPECT_EQ(store().items().size(), GetParam().recorded ? 1u : 0u);

    m_front.activate({ "com.example.editor", "Editor" });
    tick();
    m_pasteboard.copyText("plain words afterwards");
    tick();
    EXPECT_EQ(store().items().front().text, "plain words afterwards");
}

PasteboardImage smallPng()
{
    return PasteboardImage { "\x89PNG fake bytes", "public.png", { 4, 3 } };
}

INSTANTIATE_TEST_SUITE_P(Rules, ClipboardSkips,
    testing::Values(
        SkipRow { "Concealed", [](auto& f) { f.m_pasteboard.copyText("hunter2", { "org.nspasteboard.ConcealedType" }); }, false },
        SkipRow { "PasswordManager",
            [](auto& f) {
                f.m_pasteboard.copy({ "public.utf8-plain-text", "org.nspasteboard.source" },
                    { { "public.utf8-plain-text", "hunter2" }, { "org.nspasteboard.source", "com.agilebits.onepassword" } });
            },
            false },
        SkipRow { "ExcludedAppInFront",
            [](auto& f) {
                f.m_front.activate({ "com.example.vault", "Vault" });
                f.tick();
                f.m_pasteboard.copyText("secret");
            },
            false },
        SkipRow { "ExcludedAppInFrontOnlyBrieflyDuringTheTick",
            [](auto& f) {
                f.m_front.activate({ "com.example.vault", "Vault" });
                f.m_pasteboard.copyText("secret");
                f.m_front.activate({ "com.example.editor", "Editor" });
            },
            false },
        SkipRow { "ExcludedDeclaredSource",
            [](auto& f) {
                f.m_pasteboard.copy({ "public.utf8-plain-text", "org.nspasteboard.source" },
                    { { "public.utf8-plain-text", "secret" }, { "org.nspasteboard.source", "com.example.vault" } });
            },
            false },
        SkipRow { "Transient", [](auto& f) { f.m_pasteboard.copyText("temp", { "org.nspasteboard.TransientType" }); }, false },
        SkipRow { "TransientKeptWhenAllowed",
            [](auto& f) {
                f.settings().set(ClipboardSettings::skipTransient, false);
                f.m_pasteboard.copyText("temp", { "org.nspasteboard.TransientType" });
            },
            true },
        SkipRow { "Generated", [](auto& f) { f.m_pasteboard.copyText("gen", { "Pasteboard generator type" }); }, false },
        SkipRow { "OwnWrite", [](auto& f) { f.m_pasteboard.copyText("ours", { "com.quillmar.pasteboard" }); }, false },
        SkipRow { "Paused",
            [](auto& f) {
                f.store().setPaused(true);
                f.m_pasteboard.copyText("while paused");
                f.tick();
                f.store().setPaused(false);
            },
            false },
        SkipRow { "WhitespaceOnly", [](auto& f) { f.m_pasteboard.copyText(" \n\t "); }, false },
        SkipRow { "ImageWhenImagesAreNotSaved",
            [](auto& f) {
                f.settings().set(ClipboardSettings::saveImages, false);
                f.m_pasteboard.copy({ "public.png" }, {}, {}, smallPng());
            },
            false },
        SkipRow { "ImageWithTextWhenImagesAreNotSavedIsText",
            [](auto& f) {
                f.settings().set(ClipboardSettings::saveImages, false);
                f.m_pasteboard.copy({ "public.png", "public.utf8-plain-text" }, { { "public.utf8-plain-text", "caption" } }, {}, smallPng());
            },
            true }),
    [](const testing::TestParamInfo<SkipRow>& row) { return row.param.name; });

TEST_F(ClipboardStoreTest, IgnoreTheNextCopySkipsExactlyOne)
{
    start();
    store().ignoreNextCopy();
    EXPECT_TRUE(store().ignoresNextCopy());
    m_pasteboard.copyText("token");
    tick();
    m_pasteboard.copyText("after");
    tick();
    EXPECT_EQ(texts(), (std::vector<std::string> { "after" }));
    EXPECT_FALSE(store().ignoresNextCopy());
}

TEST_F(ClipboardStoreTest, PauseIsKeptAcrossRestarts)
{
    store().setPaused(true);
    remake();
    EXPECT_TRUE(store().isPaused());
}

TEST_F(ClipboardStoreTest, RemoteContentIsFromAnotherDevice)
{
    start();
    m_pasteboard.copyText("from the phone", { "com.apple.is-remote-clipboard" });
    tick();
    ASSERT_EQ(store().items().size(), 1u);
    EXPECT_EQ(store().items()[0].sourceName, "Another device");
    EXPECT_FALSE(store().items()[0].sourceBundleID);
}

TEST_F(ClipboardStoreTest, FilesAndLinksGetTheirKinds)
{
    start();
    m_pasteboard.copy({ "public.file-url", "public.utf8-plain-text" }, { { "public.utf8-plain-text", "a.txt" } }, { "/home/me/a.txt" });
    tick();
    m_pasteboard.copyText("https://example.com/page");
    tick();
    ASSERT_EQ(store().items().size(), 2u);
    EXPECT_EQ(store().items()[0].kind, ClipKind::link);
    EXPECT_EQ(store().items()[1].kind, ClipKind::files);
    EXPECT_EQ(store().items()[1].filePaths, (std::vector<std::string> { "/home/me/a.txt" }));
}

TEST_F(ClipboardStoreTest, TrackedLinksAreCleanedOnTheClipboardAndInTheHistory)
{
    start();
    m_pasteboard.copyText("https://example.com/a?id=7&utm_source=news");
    tick();
    tick();
    EXPECT_EQ(texts(), (std::vector<std::string> { "https://example.com/a?id=7" }));
    EXPECT_EQ(m_pasteboard.text(), "https://example.com/a?id=7");
    EXPECT_EQ(m_notices.shown, (std::vector<std::string> { "Tracking removed" }));
    EXPECT_EQ(store().cleanedLinkCount(), 1);
    ASSERT_EQ(m_pasteboard.writes.size(), 1u);
    EXPECT_EQ(m_pasteboard.writes[0].markers, (std::vector<std::string> { "com.quillmar.pasteboard" }));
}

TEST_F(ClipboardStoreTest, LinksStayWhenCleaningIsOff)
{
    for (auto setup : { +[](ClipboardStoreFixture& f) { f.store().setCleansLinks(false); },
             +[](ClipboardStoreFixture& f) { f.settings().set(ClipboardSettings::cleanLinksAutomatic, false); } }) {
        ClipboardStoreFixture fixture;
        setup(fixture);
        fixture.start();
        fixture.m_pasteboard.copyText("https://example.com/?utm_source=x");
        fixture.tick();
        EXPECT_EQ(fixture.texts(), (std::vector<std::string> { "https://example.com/?utm_source=x" }));
        EXPECT_TRUE(fixture.m_pasteboard.writes.empty());
    }
}

TEST_F(ClipboardStoreTest, ALimitBelowTenKeepsTenUnpinnedAndEveryPin)
{
    settings().set(ClipboardSettings::limit, 3);
    start();
    m_pasteboard.copyText("pinned early");
    tick();
    store().togglePin(store().items()[0].id);
    for (int index = 0; index < 14; ++index) {
        m_pasteboard.copyText("copy " + std::to_string(index));
        tick();
    }
    EXPECT_EQ(store().items().size(), 11u);
    EXPECT_EQ(store().items().back().text, "pinned early");
    EXPECT_EQ(store().items().front().text, "copy 13");
    EXPECT_EQ(store().items()[9].text, "copy 4");
}

TEST_F(ClipboardStoreTest, ClearKeepsPinsWhenAskedAndNeverTouchesTheSystemClipboard)
{
    start();
    for (const char* text : { "one", "two", "three" }) {
        m_pasteboard.copyText(text);
        tick();
    }
    store().togglePin(store().items()[1].id);
    store().clear(KeepPinned::yes);
    EXPECT_EQ(texts(), (std::vector<std::string> { "two" }));
    EXPECT_EQ(m_pasteboard.text(), "three");
    store().clear(KeepPinned::no);
    EXPECT_TRUE(store().items().empty());
}

TEST_F(ClipboardStoreTest, UseWritesMarkedContentAndMovesTheItemUp)
{
    start();
    for (const char* text : { "older", "newer" }) {
        m_pasteboard.copyText(text);
        tick();
    }
    auto olderId = store().items()[1].id;
    ASSERT_TRUE(store().use(olderId, Paste::no));
    EXPECT_EQ(m_pasteboard.text(), "older");
    EXPECT_EQ(m_pasteboard.writes.back().markers, (std::vector<std::string> { "com.quillmar.pasteboard" }));
    EXPECT_EQ(store().items()[0].id, olderId);
    auto reads = m_pasteboard.reads;
    tick();
    EXPECT_EQ(m_pasteboard.reads, reads) << "our own write is not even read back";
    EXPECT_EQ(store().items().size(), 2u);
    EXPECT_TRUE(m_keys.posted.empty());
    EXPECT_FALSE(store().use("no such id", Paste::no));
}

TEST_F(ClipboardStoreTest, PasteNeedsAccessibility)
{
    start();
    m_pasteboard.copyText("x");
    tick();
    auto id = store().items()[0].id;

    m_keys.trusted = false;
    ASSERT_TRUE(store().use(id, Paste::yes));
    m_runtime.advance(std::chrono::seconds(1));
    EXPECT_TRUE(m_keys.posted.empty());
    EXPECT_EQ(m_notices.accessibilityRequests, (std::vector<std::string> { "Allow Accessibility to paste automatically" }));

    m_keys.trusted = true;
    ASSERT_TRUE(store().usePlainText(id, Paste::yes));
    EXPECT_EQ(m_notices.shown, (std::vector<std::string> { "Copied as plain text" }));
    m_runtime.advance(ClipboardStore::pasteDelay - std::chrono::milliseconds(1));
    EXPECT_TRUE(m_keys.posted.empty()) << "the picker gets a moment to hand the keyboard back";
    m_runtime.advance(std::chrono::milliseconds(1));
    EXPECT_EQ(m_keys.posted, (std::vector<FakeKeystrokes::Key> { { KeyCode::v, EventFlags::command } }));
}

TEST_F(ClipboardStoreTest, PlainTextOfFilesIsTheirPaths)
{
    start();
    m_pasteboard.copy({ "public.file-url" }, {}, { "/a", "/b c" });
    tick();
    ASSERT_TRUE(store().usePlainText(store().items()[0].id, Paste::no));
    EXPECT_EQ(m_pasteboard.text(), "/a\n/b c");
    EXPECT_TRUE(m_pasteboard.writes.back().filePaths.empty());
}

TEST_F(ClipboardStoreTest, LinkCommandsReportTheirSentences)
{
    store().setCleansLinks(false);
    start();
    m_pasteboard.copyText("just words");
    auto none = store().cleanCurrentLink();
    ASSERT_FALSE(none);
    EXPECT_EQ(none.error().message, "No link in the clipboard");

    m_pasteboard.copyText("https://example.com/?q=1");
    auto clean = store().cleanCurrentLink();
    ASSERT_FALSE(clean);
    EXPECT_EQ(clean.error().message, "Link is already clean");

    m_pasteboard.copyText(" https://example.com/?q=1&fbclid=abc ");
    tick();
    auto cleaned = store().cleanCurrentLink();
    ASSERT_TRUE(cleaned);
    EXPECT_EQ(*cleaned, "https://example.com/?q=1");
    EXPECT_EQ(m_pasteboard.text(), "https://example.com/?q=1");
    EXPECT_EQ(texts().front(), "https://example.com/?q=1") << "the history's copy is cleaned too";
    EXPECT_EQ(m_notices.shown.back(), "Tracking removed");

    auto again = store().clean(store().items()[0].id);
    ASSERT_FALSE(again);
    EXPECT_EQ(again.error().message, "Link is already clean");
}

TEST_F(ClipboardStoreTest, ItemsCanBeFilteredAndAnalysed)
{
    start();
    for (const char* text : { "#ff0000", "https://www.example.com/x", "notes" }) {
        m_pasteboard.copyText(text);
        tick();
    }
    auto colours = store().items(ClipCategory::colors, "");
    ASSERT_EQ(colours.size(), 1u);
    EXPECT_EQ(store().info(colours[0]).color->hex(), "#FF0000");
    auto links = store().items(ClipCategory::links, "EXAMPLE");
    ASSERT_EQ(links.size(), 1u);
    EXPECT_EQ(store().info(links[0]).domain, "example.com");
    EXPECT_EQ(store().items(ClipCategory::all, "note").size(), 1u);
}

TEST_F(ClipboardStoreTest, HistorySurvivesARestart)
{
    start();
    m_pasteboard.copyText("kept");
    tick();
    store().togglePin(store().items()[0].id);
    auto before = store().items();
    store().flush();
    remake();
    EXPECT_EQ(store().items(), before);
}

TEST_F(ClipboardStoreTest, AnUndecodableHistoryIsKeptAsideAndNeverOverwritten)
{
    std::filesystem::create_directories(folder());
    std::ofstream(historyFile()) << "[{\"id\":\"a\",\"kind\":\"text\",\"date\":17";
    m_runtime.setWallTime(WallTime(std::chrono::sys_days(std::chrono::year(2026) / 11 / 22)) + std::chrono::hours(10));
    EXPECT_TRUE(store().items().empty());
    auto kept = folder() / "history.json.unreadable-20261122T100000Z";
    ASSERT_TRUE(std::filesystem::exists(kept));

    start();
    m_pasteboard.copyText("new");
    tick();
    store().flush();
    auto text = readFile(kept);
    EXPECT_EQ(**text, "[{\"id\":\"a\",\"kind\":\"text\",\"date\":17");
    EXPECT_EQ(savedHistory().size(), 1u);
}

TEST_F(ClipboardStoreTest, UnreadableEntriesAreDroppedButTheFileIsKept)
{
    std::filesystem::create_directories(folder());
    std::ofstream(historyFile()) << R"([{"id":"a","kind":"text","text":"good","date":1700000000},{"id":"b","kind":"hologram","date":1}])";
    EXPECT_EQ(texts(), (std::vector<std::string> { "good" }));
    int keptCopies = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder()))
        keptCopies += entry.path().filename().string().rfind("history.json.unreadable-", 0) == 0;
    EXPECT_EQ(keptCopies, 1);
    m_runtime.advance(ClipboardStore::saveDelay);
    EXPECT_EQ(savedHistory().size(), 1u) << "the readable entries are written back";
}

} // namespace
} // namespace quillmar
