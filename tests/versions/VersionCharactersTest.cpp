#include <gtest/gtest.h>

#include <string>

#include "core/versions/VersionCharacters.h"

namespace quillmar {
namespace {

using Class = VersionCharacterClass;

TEST(VersionCharactersTest, ClassifiesCodePointsByUnicodeCategory)
{
    struct Row {
        const char* name;
        std::string text;
        std::size_t length;
        Class expected;
    };
    for (const auto& row : {
             Row { "ASCII digit", "7", 1, Class::number },
             Row { "ASCII letter", "Q", 1, Class::letter },
             Row { "dot", ".", 1, Class::other },
             Row { "Latin letter with accent", "\u00e9", 2, Class::letter },
             Row { "Arabic-Indic digit", "\u0663", 2, Class::number },
             Row { "vulgar fraction is a number", "\u00bd", 2, Class::number },
             Row { "Roman numeral is a number", "\u2160", 3, Class::number },
             Row { "CJK ideograph is a letter", "\u4e00", 3, Class::letter },
             Row { "combining mark is neither", "\u0301", 2, Class::other },
             Row { "emoji is neither", "\U0001F600", 4, Class::other },
             Row { "stray continuation byte", "\x80", 1, Class::other },
             Row { "overlong slash", "\xc0\xaf", 1, Class::other },
             Row { "encoded surrogate", "\xed\xa0\x80", 1, Class::other },
             Row { "beyond U+10FFFF", "\xf4\x90\x80\x80", 1, Class::other },
             Row { "cut-off sequence", "\xe2\x82", 1, Class::other },
         }) {
        auto character = versionCharacterAt(row.text, 0);
        EXPECT_EQ(character.length, row.length) << row.name;
        EXPECT_EQ(character.characterClass, row.expected) << row.name;
    }
}

TEST(VersionCharactersTest, TrimsUnicodeSpaceButNotBrokenBytes)
{
    struct Row {
        const char* name;
        std::string text;
        std::string expected;
    };
    for (const auto& row : {
             Row { "ASCII", " \t1.2\r\n", "1.2" },
             Row { "no-break and line separator", "\u00a01.2\u2028", "1.2" },
             Row { "ideographic space", "\u30001\u3000", "1" },
             Row { "only space", " \u00a0 ", "" },
             Row { "broken byte stays", "\xff 1 \xc2", "\xff 1 \xc2" },
             Row { "inner space stays", "1 2", "1 2" },
         }) {
        EXPECT_EQ(trimmedUnicodeSpace(row.text), row.expected) << row.name;
    }
}

TEST(VersionCharactersTest, LowercasesWithoutLocale)
{
    EXPECT_EQ(lowercasedText("RC1"), "rc1");
    EXPECT_EQ(lowercasedText("\u00c9T\u00c9"), "\u00e9t\u00e9");
    EXPECT_EQ(lowercasedText("\u0130"), "i\u0307");
}

} // namespace
} // namespace quillmar
