#include <gtest/gtest.h>

#include "core/clipboard/ClipAnalysis.h"

namespace quillmar {
namespace {

struct ColorRow {
    const char* name;
    const char* text;
    std::optional<std::string> hex;
};

class ColorParsing : public testing::TestWithParam<ColorRow> { };

TEST_P(ColorParsing, ReadsCssForms)
{
    auto color = ClipColor::parse(GetParam().text);
    EXPECT_EQ(color ? std::optional<std::string>(color->hex()) : std::nullopt, GetParam().hex);
}

INSTANTIATE_TEST_SUITE_P(Forms, ColorParsing,
    testing::Values(
        ColorRow { "LongHex", "#FF8800", "#FF8800" },
        ColorRow { "ShortHex", "#f80", "#FF8800" },
        ColorRow { "HexWithAlpha", "#ff880080", "#FF880080" },
        ColorRow { "ShortHexWithAlpha", "#f808", "#FF880088" },
        ColorRow { "SurroundingWhitespace", "  #000000\n", "#000000" },
        ColorRow { "RgbCommas", "rgb(255, 136, 0)", "#FF8800" },
        ColorRow { "RgbSpacesAndSlashAlpha", "rgb(255 136 0 / 50%)", "#FF880080" },
        ColorRow { "RgbaUpperCaseName", "RGBA(0,0,255,0.5)", "#0000FF80" },
        ColorRow { "RgbPercent", "rgb(100%, 0%, 0%)", "#FF0000" },
        ColorRow { "HslRed", "hsl(0, 100%, 50%)", "#FF0000" },
        ColorRow { "HslGreenWithDeg", "hsl(120deg 100% 25%)", "#008000" },
        ColorRow { "HslNegativeHue", "hsla(-120, 100%, 50%, 1)", "#0000FF" },
        ColorRow { "FiveHexDigits", "#12345", std::nullopt },
        ColorRow { "NotHex", "#GG0000", std::nullopt },
        ColorRow { "BareHexIsNotAColour", "ff8800", std::nullopt },
        ColorRow { "ChannelOutOfRange", "rgb(256, 0, 0)", std::nullopt },
        ColorRow { "AlphaOutOfRange", "rgba(0, 0, 0, 2)", std::nullopt },
        ColorRow { "TwoNumbers", "rgb(1, 2)", std::nullopt },
        ColorRow { "HslWithoutPercents", "hsl(0, 100, 50)", std::nullopt },
        ColorRow { "TextAround", "the colour #fff", std::nullopt },
        ColorRow { "Unclosed", "rgb(1, 2, 3", std::nullopt }),
    [](const testing::TestParamInfo<ColorRow>& row) { return row.param.name; });

struct CodeRow {
    const char* name;
    const char* text;
    bool code;
};

class CodeHeuristic : public testing::TestWithParam<CodeRow> { };

TEST_P(CodeHeuristic, TellsCodeFromProse)
{
    EXPECT_EQ(ClipAnalysis::looksLikeCode(GetParam().text), GetParam().code);
}

INSTANTIATE_TEST_SUITE_P(Samples, CodeHeuristic,
    testing::Values(
        CodeRow { "CStatement", "printf(\"hi\");", true },
        CodeRow { "CFunction", "int main() {\n    return 0;\n}", true },
        CodeRow { "Python", "def area(r):\n    return 3.14 * r * r", true },
        CodeRow { "Swift", "let total = items.reduce(0, +)\nprint(total)", true },
        CodeRow { "JavaScriptArrow", "const add = (a, b) => a + b;", true },
        CodeRow { "Sql", "SELECT name FROM users WHERE id = 3;", true },
        CodeRow { "Sentence", "See you at three, and bring the notes.", false },
        CodeRow { "SemicolonProse", "I came; I saw; I left;", false },
        CodeRow { "ParenthesesInProse", "We met (briefly) on Monday.", false },
        CodeRow { "KeywordLikeProse", "import the data (carefully)\nreturn to sender", false },
        CodeRow { "Json", "{\"name\": \"value\"}", false },
        CodeRow { "Address", "221B Baker Street\nLondon", false },
        CodeRow { "Empty", "   ", false }),
    [](const testing::TestParamInfo<CodeRow>& row) { return row.param.name; });

ClipItem itemWith(ClipKind kind, std::optional<std::string> text)
{
    ClipItem item;
    item.id = "id";
    item.kind = kind;
    item.text = std::move(text);
    return item;
}

TEST(ClipAnalysis, LinksCarryTheirDomainAndCategory)
{
    auto info = ClipAnalysis::analyze(itemWith(ClipKind::link, "https://www.Example.org/path?q=1"));
    EXPECT_EQ(info.category, ClipCategory::links);
    EXPECT_EQ(info.domain, "example.org");
    EXPECT_EQ(info.lineCount, 1u);
    EXPECT_FALSE(info.code);
}

TEST(ClipAnalysis, ColoursAreTheirOwnCategory)
{
    auto info = ClipAnalysis::analyze(itemWith(ClipKind::text, "#336699"));
    EXPECT_EQ(info.category, ClipCategory::colors);
    ASSERT_TRUE(info.color);
    EXPECT_EQ(info.color->hex(), "#336699");
    EXPECT_EQ(ClipAnalysis::analyze(itemWith(ClipKind::image, std::nullopt)).category, ClipCategory::images);
    EXPECT_EQ(ClipAnalysis::analyze(itemWith(ClipKind::files, std::nullopt)).category, ClipCategory::files);
    EXPECT_EQ(ClipAnalysis::analyze(itemWith(ClipKind::text, "plain words")).category, ClipCategory::all);
}

TEST(ClipAnalysis, CountsLines)
{
    EXPECT_EQ(ClipAnalysis::lineCount(""), 0u);
    EXPECT_EQ(ClipAnalysis::lineCount("one"), 1u);
    EXPECT_EQ(ClipAnalysis::lineCount("one\n"), 1u);
    EXPECT_EQ(ClipAnalysis::lineCount("one\r\ntwo"), 2u);
    EXPECT_EQ(ClipAnalysis::lineCount("\n\n"), 2u);
}

TEST(ClipSearch, FiltersByCategoryAndFoldedText)
{
    std::vector<ClipItem> items {
        itemWith(ClipKind::text, "Crème brûlée recipe"),
        itemWith(ClipKind::link, "https://example.com/creme"),
        itemWith(ClipKind::text, "#ffffff"),
        itemWith(ClipKind::files, std::nullopt),
    };
    items[3].filePaths = std::vector<std::string> { "/Users/me/CREME.txt" };
    items[0].sourceName = "Notes";
    for (std::size_t index = 0; index < items.size(); ++index)
        items[index].id = std::to_string(index);
    auto analyse = [](const ClipItem& item) { return ClipAnalysis::analyze(item); };
    auto found = [&](ClipCategory category, std::string_view search) {
        std::string result;
        for (const auto& item : filterClips(items, category, search, analyse))
            result += item.id;
        return result;
    };
    EXPECT_EQ(found(ClipCategory::all, ""), "0123");
    EXPECT_EQ(found(ClipCategory::all, "  creme "), "013") << "accents and case are folded";
    EXPECT_EQ(found(ClipCategory::all, "notes"), "0") << "the source name is searched";
    EXPECT_EQ(found(ClipCategory::links, ""), "1");
    EXPECT_EQ(found(ClipCategory::colors, ""), "2");
    EXPECT_EQ(found(ClipCategory::files, "creme"), "3");
    EXPECT_EQ(found(ClipCategory::images, ""), "");
}

} // namespace
} // namespace quillmar
