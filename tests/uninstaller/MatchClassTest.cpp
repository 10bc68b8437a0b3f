#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/uninstaller/MatchClass.h"
#include "core/uninstaller/NameTokens.h"
#include "core/uninstaller/ProtectedIdentifiers.h"

namespace quillmar {
namespace {

struct ClassifyRow {
    const char* name;
    const char* entry;
    const char* identifier;
    MatchClass expected;
};

class ClassifyTest : public testing::TestWithParam<ClassifyRow> { };

TEST_P(ClassifyTest, JudgesTheEntryName)
{
    const auto& row = GetParam();
    EXPECT_EQ(matchClassName(classify(row.entry, row.identifier)), matchClassName(row.expected));
}

constexpr ClassifyRow classifyRows[] = {
    { "IdentifierItself", "com.example.App", "com.example.App", MatchClass::exact },
    { "Plist", "com.example.App.plist", "com.example.App", MatchClass::exact },
    { "SavedState", "com.example.App.savedstate", "com.example.App", MatchClass::exact },
    { "BinaryCookies", "com.example.App.binarycookies", "com.example.App", MatchClass::exact },
    { "LockFile", "com.example.App.lockfile", "com.example.App", MatchClass::exact },
    { "Log", "com.example.App.log", "com.example.App", MatchClass::exact },
    { "UuidPreferenceFile", "com.example.App.0A1B2C3D-0000-1111-2222-333344445555.plist", "com.example.App",
        MatchClass::exact },
    { "UuidWithThreeHyphensIsRelated", "com.example.App.0A1B2C3D-0000-1111-2222X333344445555.plist",
        "com.example.App", MatchClass::related },
    { "UuidOfWrongLengthIsRelated", "com.example.App.0A1B2C3D-0000-1111-2222-33334444555.plist", "com.example.App",
        MatchClass::related },
    { "TeamPrefixedGroup", "ABCDE12345.com.example.App", "com.example.App", MatchClass::exact },
    { "ShortTeamPrefixIsNot", "ABCD.com.example.App", "com.example.App", MatchClass::none },
    { "LongTeamPrefixIsNot", "ABCDE123456.com.example.App", "com.example.App", MatchClass::none },
    { "TeamPrefixWithoutDotIsNot", "ABCDE1234Xcom.example.App", "com.example.App", MatchClass::none },
    { "HelperIsRelated", "com.example.App.helper", "com.example.App", MatchClass::related },
    { "OtherSuffixIsRelated", "com.example.App.plist.bak", "com.example.App", MatchClass::related },
    { "LongerWordIsNone", "com.example.Apple", "com.example.App", MatchClass::none },
    { "CaseMatters", "com.example.app.plist", "com.example.App", MatchClass::none },
    { "PrefixOfIdentifierIsNone", "com.example", "com.example.App", MatchClass::none },
    { "TrailingDotAloneIsRelated", "com.example.App.", "com.example.App", MatchClass::related },
    { "EmptyIdentifierMatchesNothing", "com.example.App", "", MatchClass::none },
    { "EmptyEntryMatchesNothing", "", "com.example.App", MatchClass::none },
};

INSTANTIATE_TEST_SUITE_P(Rows, ClassifyTest, testing::ValuesIn(classifyRows),
    [](const testing::TestParamInfo<ClassifyRow>& row) { return std::string(row.param.name); });

struct ProtectedRow {
    const char* name;
    const char* identifier;
    bool isProtected;
};

TEST(ProtectedIdentifiersTest, PrefixesDecide)
{
    const ProtectedRow rows[] = {
        { "apple", "com.apple.Safari", true },
        { "appleWithoutDotStillPrefix", "com.applesauce.Thing", true },
        { "ownSuite", "com.quillmar.Quillmar", true },
        { "shortcuts", "is.workflow.my.app", true },
        { "sparkle", "org.sparkle-project.Sparkle", true },
        { "sentry", "io.sentry.Sentry", true },
        { "keystone", "com.google.keystone.agent", true },
        { "googleUpdaterOnlyThroughPrefix", "com.google.Chrome", false },
        { "swift", "org.swift.swiftpm", true },
        { "cups", "org.cups.printers", true },
        { "caseSensitive", "COM.APPLE.Safari", false },
        { "ordinaryApp", "com.example.App", false },
        { "empty", "", false },
    };
    for (const auto& row : rows)
        EXPECT_EQ(ProtectedIdentifiers::isProtected(row.identifier), row.isProtected) << row.name;
}

TEST(ProtectedIdentifiersTest, OwnIdentifierIgnoresCase)
{
    EXPECT_TRUE(ProtectedIdentifiers::isOwn("com.quillmar.Quillmar"));
    EXPECT_TRUE(ProtectedIdentifiers::isOwn("COM.QUILLMAR.helper"));
    EXPECT_FALSE(ProtectedIdentifiers::isOwn("com.quillmarx.App"));
    EXPECT_FALSE(ProtectedIdentifiers::isOwn("com.quillmar"));
}

struct TokenRow {
    const char* name;
    const char* text;
    std::vector<std::string> tokens;
};

TEST(NameTokensTest, SplitsLowersAndDropsShortAndStopWords)
{
    const TokenRow rows[] = {
        { "words", "Visual Studio Code", { "visual", "studio", "code" } },
        { "punctuationAndDigits", "HP Smart 2.0", { "smart" } },
        { "stopWords", "Sketch Helper Pro Lite Updater", { "sketch" } },
        { "camelCaseStaysOneWord", "SlackMacGap", { "slackmacgap" } },
        { "threeLettersDropped", "Fig App One", {} },
        { "fourLettersKept", "Figma", { "figma" } },
        { "numbersAreWordCharacters", "Photo2024 Tool", { "photo2024", "tool" } },
        { "accentedLetters", "Éditeur Café", { "éditeur", "café" } },
        { "combiningMarkStaysInside", "Cafe\xCC\x81s", { "cafe\xCC\x81s" } },
        { "otherScripts", "微信 Телеграм", { "телеграм" } },
        { "symbolsSplit", "Foo+Bar_Baz•Quux", { "quux" } },
        { "empty", "", {} },
    };
    for (const auto& row : rows)
        EXPECT_EQ(NameTokens::split(row.text), row.tokens) << row.name;
}

} // namespace
} // namespace quillmar
