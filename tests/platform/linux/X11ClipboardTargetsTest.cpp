#include <gtest/gtest.h>

#include "core/clipboard/PasteboardSnapshot.h"
#include "platform/linux/X11ClipboardTargets.h"

namespace quillmar {
namespace {

namespace Targets = X11ClipboardTargets;

TEST(X11ClipboardTargets, ReadsOtherNamesOfTheSameContentAsOneCoreType)
{
    // The older and desktop-specific spellings other clients offer, and the password managers' hint.
    for (auto [alias, usual] : std::initializer_list<std::pair<const char*, const char*>> {
             { "STRING", "UTF8_STRING" }, { "TEXT", "UTF8_STRING" }, { "text/plain", "UTF8_STRING" },
             { "x-special/gnome-copied-files", "text/uri-list" },
             { "x-kde-passwordManagerHint", "org.nspasteboard.ConcealedType" },
         }) {
        ASSERT_NE(Targets::find(alias), nullptr) << alias;
        EXPECT_EQ(Targets::find(alias)->type, Targets::find(usual)->type) << alias;
    }
    for (const char* ignored : { "TIMESTAMP", "MULTIPLE", "image/bmp", "", "SAVE_TARGETS" })
        EXPECT_EQ(Targets::find(ignored), nullptr) << ignored;
}

TEST(X11ClipboardTargets, WritesEachCoreTypeUnderTheNamesReadersAskForFirstAndReadsThemBack)
{
    auto names = [](std::string_view type) {
        std::vector<std::string_view> targets;
        for (const auto* row : Targets::offeredFor(type)) {
            targets.push_back(row->target);
            EXPECT_EQ(Targets::find(row->target), row) << row->target;
        }
        return targets;
    };
    EXPECT_EQ(names(PasteboardTypes::text[0]), (std::vector<std::string_view> { "UTF8_STRING", "text/plain;charset=utf-8" }));
    EXPECT_EQ(names("public.file-url"), std::vector<std::string_view> { "text/uri-list" });
    EXPECT_EQ(names("public.png"), std::vector<std::string_view> { "image/png" });
    EXPECT_EQ(names(PasteboardTypes::concealed),
        (std::vector<std::string_view> { "x-kde-passwordManagerHint", "org.nspasteboard.ConcealedType" }));
    EXPECT_EQ(Targets::find("x-kde-passwordManagerHint")->markerValue, "secret");
    EXPECT_TRUE(names("public.tiff").empty());
}

TEST(X11ClipboardTargets, DecodesTextToValidUtf8)
{
    EXPECT_EQ(Targets::decodeText("caf\xc3\xa9", false), "café");
    EXPECT_EQ(Targets::decodeText("caf\xe9", true), "café");
    EXPECT_EQ(Targets::decodeText("a\xff\xc3z", false), "az");
    EXPECT_EQ(Targets::decodeText(std::string_view("a\0b", 3), false), std::string("a\0b", 3));
}

TEST(X11ClipboardTargets, KeepsOnlyLocalFilesOfAUriList)
{
    struct Row {
        const char* name;
        std::string_view list;
        std::vector<std::string> paths;
    };
    for (const auto& [name, list, paths] : std::initializer_list<Row> {
             { "two files, CRLF", "file:///home/me/a.txt\r\nfile:///tmp/b\r\n", { "/home/me/a.txt", "/tmp/b" } },
             { "percent-encoded", "file:///home/me/a%20b%C3%A9.txt", { "/home/me/a bé.txt" } },
             { "localhost and the short form", "file://localhost/etc/hosts\nfile:/srv", { "/etc/hosts", "/srv" } },
             { "comments, remote hosts and other schemes", "# c\nfile://server/x\nhttps://a.b/c\nsmb://s/x\n", {} },
             { "relative and malformed", "file:relative\nfile:///bad%zz\nfile:///nul%00\nrelative/path\n", {} },
             { "a file manager's cut list", "cut\nfile:///a\nfile:///b", { "/a", "/b" } },
         })
        EXPECT_EQ(Targets::decodeFiles(list), paths) << name;
}

TEST(X11ClipboardTargets, FileListsRoundTrip)
{
    std::vector<std::string> paths { "/home/me/a b#c%.txt", "/tmp/été\n" };
    EXPECT_EQ(Targets::encodeFiles({ "/a b" }), "file:///a%20b\r\n");
    EXPECT_EQ(Targets::decodeFiles(Targets::encodeFiles(paths)), paths);
}

TEST(X11ClipboardTargets, ReadsThePixelSizeOfAPngHeader)
{
    std::string png("\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR\0\0\x01\x02\0\0\0\x03", 24);
    EXPECT_EQ(Targets::pngSize(png), (PixelSize { 258, 3 }));
    EXPECT_EQ(Targets::pngSize(png.substr(0, 23)), PixelSize {});
    EXPECT_EQ(Targets::pngSize("GIF89a............................"), PixelSize {});
}

} // namespace
} // namespace quillmar
