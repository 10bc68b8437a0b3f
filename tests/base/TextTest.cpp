#include <gtest/gtest.h>

#include "core/base/Text.h"

namespace quillmar {
namespace {

TEST(AsciiCase, MapsOnlyAsciiLettersWhateverTheNeighbours)
{
    // The bytes next to the letter ranges ('@' '[' '`' '{') and UTF-8 bytes stay as they are.
    EXPECT_EQ(asciiLower("@AZ[`az{ Ä1"), "@az[`az{ Ä1");
    EXPECT_EQ(asciiUpper("@AZ[`az{ ä1"), "@AZ[`AZ{ ä1");
    EXPECT_EQ(asciiLower(""), "");
    EXPECT_EQ(asciiLower('\xC3'), '\xC3');
}

TEST(AsciiCase, ComparesWithoutCaseOnlyWhereAsciiHasCase)
{
    EXPECT_TRUE(equalsIgnoringAsciiCase("Location:", "lOCATION:"));
    EXPECT_FALSE(equalsIgnoringAsciiCase("ä", "Ä"));
    EXPECT_FALSE(equalsIgnoringAsciiCase("@", "`")); // one case step apart, but not letters
    EXPECT_FALSE(equalsIgnoringAsciiCase("abc", "ab"));

    EXPECT_TRUE(startsWithIgnoringAsciiCase("HTTP/1.1 200", "http/"));
    EXPECT_TRUE(startsWithIgnoringAsciiCase("rgb", "RGB"));
    EXPECT_FALSE(startsWithIgnoringAsciiCase("rg", "rgb"));
}

} // namespace
} // namespace quillmar
