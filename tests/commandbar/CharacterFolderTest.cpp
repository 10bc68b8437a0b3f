#include <gtest/gtest.h>

#include "core/commandbar/CharacterFolder.h"
#include "core/commandbar/CommandMatcher.h"

namespace quillmar {
namespace {

struct FoldRow {
    const char* name;
    std::string character;
    std::string folded;
};

class FoldTest : public testing::TestWithParam<FoldRow> { };

TEST_P(FoldTest, FoldsOneCharacter)
{
    EXPECT_EQ(CommandMatcher::fold(GetParam().character), GetParam().folded);
}

INSTANTIATE_TEST_SUITE_P(Characters, FoldTest,
    testing::Values(FoldRow { "AsciiUppercaseIsLowered", "Q", "q" },
        FoldRow { "AsciiOtherIsKept", "_", "_" },
        FoldRow { "LineBreakPairIsKept", "\r\n", "\r\n" },
        FoldRow { "ComposedAccentGoes", "\u00C9", "e" },
        FoldRow { "DecomposedAccentGoes", "E\u0301", "e" },
        FoldRow { "RingAboveGoes", "A\u030A", "a" },
        FoldRow { "SharpSKeepsTheFirstOfItsFold", "\u00DF", "s" },
        FoldRow { "LigatureKeepsTheFirstOfItsFold", "\uFB01", "f" },
        FoldRow { "GreekCapitalIsLowered", "\u03A9", "\u03C9" },
        FoldRow { "DottedCapitalIBecomesI", "\u0130", "i" },
        FoldRow { "FullWidthLetterKeepsItsWidth", "\uFF21", "\uFF41" },
        FoldRow { "EmojiIsKept", "\U0001F600", "\U0001F600" },
        FoldRow { "FlagStaysOneCharacter", "\U0001F1EB\U0001F1F7", "\U0001F1EB\U0001F1F7" },
        FoldRow { "OnlyTheFirstCharacterIsRead", "Ab", "a" },
        FoldRow { "EmptyStaysEmpty", "", "" }),
    [](const auto& row) { return std::string(row.param.name); });

TEST(CharacterFolderTest, CutsIntoUserPerceivedCharacters)
{
    CharacterFolder folder;
    // "é" written decomposed, a flag of two code points, a family joined by zero-width joiners, "\r\n".
    std::string text = "e\u0301\U0001F1EB\U0001F1F7\U0001F468\u200D\U0001F469\u200D\U0001F467\r\nx";
    auto characters = folder.split(text);
    ASSERT_EQ(characters.size(), 5u);
    EXPECT_EQ(characters[0].key, FoldedKey { 'e' });
    EXPECT_TRUE(characters[3].isWhitespace) << "\"\\r\\n\" is one whitespace character";
    EXPECT_EQ(characters[3].end - characters[3].begin, 2u);
    EXPECT_EQ(characters[4].begin, text.size() - 1);
}

TEST(CharacterFolderTest, AsciiAndUnicodePathsAgree)
{
    CharacterFolder folder;
    auto split = [&folder](std::string_view text) {
        auto characters = folder.split(text);
        return std::vector<CharacterFolder::Character>(characters.begin(), characters.end());
    };
    auto ascii = split("Hello-World\r\n");
    // The same text with one non-ASCII character appended goes through ICU.
    auto unicode = split("Hello-World\r\n\u00E9");
    ASSERT_EQ(unicode.size(), ascii.size() + 1);
    for (std::size_t index = 0; index < ascii.size(); ++index) {
        EXPECT_EQ(ascii[index].key, unicode[index].key) << index;
        EXPECT_EQ(ascii[index].characterClass, unicode[index].characterClass) << index;
        EXPECT_EQ(ascii[index].isWhitespace, unicode[index].isWhitespace) << index;
    }
}

TEST(CharacterFolderTest, DistinctClustersGetDistinctKeys)
{
    CharacterFolder folder;
    auto first = folder.split("\U0001F1EB\U0001F1F7").front().key; // France
    auto second = folder.split("\U0001F1E9\U0001F1EA").front().key; // Germany
    EXPECT_NE(first, second);
    EXPECT_GE(first, 0x110000u) << "a cluster of several code points never reads as a code point";
}

TEST(CharacterFolderTest, IllFormedUtf8ReadsAsReplacementCharacters)
{
    CharacterFolder folder;
    auto characters = folder.split("a\xC3\x28z\xFF");
    ASSERT_GE(characters.size(), 3u);
    EXPECT_EQ(characters.front().key, FoldedKey { 'a' });
}

TEST(CharacterFolderTest, LooseFoldingIgnoresCaseAccentsWidthAndSpaces)
{
    CharacterFolder folder;
    EXPECT_EQ(folder.foldLoosely("R\u00E9 sum\u00E9"), "resume");
    EXPECT_EQ(folder.foldLoosely("\uFF32\uFF25\uFF33\uFF35\uFF2D\uFF25"), "resume") << "full-width letters";
    EXPECT_EQ(folder.foldLoosely("\tStra\u00DFe\u3000"), "strasse") << "ideographic space and a sharp s";
    EXPECT_EQ(folder.foldLoosely(" \n "), "");
}

TEST(CommandMatcherCleanTest, CollapsesWhitespaceRuns)
{
    EXPECT_EQ(CommandMatcher::clean("  Release\tnotes \r\n 2.0\u00A0 "), "Release notes 2.0");
    EXPECT_EQ(CommandMatcher::clean(" \n"), "");
    EXPECT_EQ(CommandMatcher::clean("caf\u00E9"), "caf\u00E9") << "display text is not folded";
}

} // namespace
} // namespace quillmar
