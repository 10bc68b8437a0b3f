#include <gtest/gtest.h>

#include "core/hotkeys/Shortcut.h"

namespace quillmar {
namespace {

constexpr std::uint32_t controlOption = Shortcut::controlMask | Shortcut::optionMask;

TEST(Shortcut, DisplayPutsModifiersInFixedOrderBeforeTheLabel)
{
    EXPECT_EQ((Shortcut { 9, 6656, "V" }.display()), "⌃⌥⇧V");
    EXPECT_EQ((Shortcut { 49, Shortcut::modifierMask, "Space" }.display()), "⌃⌥⇧⌘Space");
    EXPECT_EQ((Shortcut { 124, 6400, "→" }.display()), "⌃⌥⌘→");
    EXPECT_EQ((Shortcut { 49, Shortcut::optionMask, "Space" }.display()), "⌥Space");
    EXPECT_EQ((Shortcut { 122, 0, "F1" }.display()), "F1");
    // Bits outside the four modifiers (caps lock) show nothing.
    EXPECT_EQ((Shortcut { 9, 1024 | Shortcut::commandMask, "V" }.display()), "⌘V");
}

TEST(Shortcut, EqualityComparesAllThreeFields)
{
    Shortcut base { 9, controlOption, "V" };
    EXPECT_EQ(base, (Shortcut { 9, controlOption, "V" }));
    EXPECT_NE(base, (Shortcut { 8, controlOption, "V" }));
    EXPECT_NE(base, (Shortcut { 9, Shortcut::controlMask, "V" }));
    EXPECT_NE(base, (Shortcut { 9, controlOption, "W" }));
}

struct LabelRow {
    const char* name;
    std::uint32_t keyCode;
    std::string_view characters;
    std::string_view expected;
};

class ShortcutLabel : public testing::TestWithParam<LabelRow> { };

TEST_P(ShortcutLabel, Reads)
{
    EXPECT_EQ(Shortcut::label(GetParam().keyCode, GetParam().characters), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Table, ShortcutLabel,
    testing::Values(
        LabelRow { "spaceIsNamedNotBlank", 49, " ", "Space" },
        LabelRow { "returnIsNamedOverItsCarriageReturn", 36, "\r", "↩" },
        LabelRow { "tab", 48, "\t", "⇥" },
        LabelRow { "delete", 51, "\x7f", "⌫" },
        LabelRow { "escape", 53, "\x1b", "⎋" },
        LabelRow { "forwardDelete", 117, "", "⌦" },
        LabelRow { "keypadEnter", 76, "\x03", "⌤" },
        LabelRow { "leftArrow", 123, "\xef\x9c\x82", "←" },
        LabelRow { "upArrow", 126, "", "↑" },
        LabelRow { "f1", 122, "", "F1" },
        LabelRow { "f2IsNotNextToF1", 120, "", "F2" },
        LabelRow { "f17IsFarBelowTheOthers", 64, "", "F17" },
        LabelRow { "letterIsUpperCased", 9, "v", "V" },
        LabelRow { "digitStaysAsItIs", 18, "1", "1" },
        LabelRow { "punctuationStaysAsItIs", 43, ",", "," },
        LabelRow { "latinOneLetterIsUpperCased", 41, "é", "É" },
        LabelRow { "latinExtendedLetterIsUpperCased", 6, "ž", "Ž" },
        LabelRow { "cyrillicLetterIsUpperCased", 9, "м", "М" },
        LabelRow { "sharpSHasNoSingleCapital", 27, "ß", "ß" },
        LabelRow { "controlCharactersAreLeftOut", 9, "\x16", "" },
        LabelRow { "unnamedFunctionKeyTextIsLeftOut", 114, "\xef\x9d\x86", "" },
        LabelRow { "invalidUtf8IsLeftOut", 0, "a\xff\xc3", "A" }),
    [](const testing::TestParamInfo<LabelRow>& row) { return std::string(row.param.name); });

TEST(Shortcut, FromEventTakesCodeMaskAndLabel)
{
    auto shortcut = Shortcut::fromEvent({ 9, controlOption | Shortcut::shiftMask, "v" });
    EXPECT_EQ(shortcut, (Shortcut { 9, 6656, "V" }));
}

TEST(Shortcut, FromEventDropsUnusedModifierBits)
{
    constexpr std::uint32_t capsLock = 1024;
    auto shortcut = Shortcut::fromEvent({ 0, Shortcut::commandMask | capsLock, "a" });
    ASSERT_TRUE(shortcut);
    EXPECT_EQ(shortcut->modifiers, Shortcut::commandMask);
}

TEST(Shortcut, FromEventRefusesBareModifiersAndUnlabelledKeys)
{
    for (std::uint32_t keyCode = 54; keyCode <= 63; ++keyCode)
        EXPECT_EQ(Shortcut::fromEvent({ keyCode, Shortcut::commandMask, "" }), std::nullopt) << keyCode;
    EXPECT_EQ(Shortcut::fromEvent({ 55, Shortcut::commandMask, "x" }), std::nullopt);
    EXPECT_EQ(Shortcut::fromEvent({ 9, Shortcut::controlMask, "\x16" }), std::nullopt);
    EXPECT_TRUE(Shortcut::fromEvent({ 64, 0, "" })) << "key code 64 (F17) lies just past the modifier keys";
    EXPECT_TRUE(Shortcut::fromEvent({ 53, 0, "" })) << "escape is named even without characters";
}

TEST(Shortcut, JsonHasExactlyTheThreeKeysAndRoundTrips)
{
    Shortcut shortcut { 123, 6400, "←" };
    auto json = shortcut.toJson();
    EXPECT_EQ(json, (nlohmann::json { { "keyCode", 123 }, { "modifiers", 6400 }, { "keyLabel", "←" } }));
    EXPECT_EQ(Shortcut::fromJson(json), shortcut);
    EXPECT_EQ(Shortcut::fromJson(nlohmann::json::parse(json.dump())), shortcut);
}

struct JsonRow {
    const char* name;
    const char* text;
};

class ShortcutFromJsonRefuses : public testing::TestWithParam<JsonRow> { };

TEST_P(ShortcutFromJsonRefuses, Record)
{
    auto json = nlohmann::json::parse(GetParam().text);
    EXPECT_EQ(Shortcut::fromJson(json), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Table, ShortcutFromJsonRefuses,
    testing::Values(
        JsonRow { "notAnObject", R"([9, 6144, "V"])" },
        JsonRow { "null", "null" },
        JsonRow { "missingKeyCode", R"({"modifiers": 6144, "keyLabel": "V"})" },
        JsonRow { "missingModifiers", R"({"keyCode": 9, "keyLabel": "V"})" },
        JsonRow { "missingLabel", R"({"keyCode": 9, "modifiers": 6144})" },
        JsonRow { "keyCodeAsString", R"({"keyCode": "9", "modifiers": 6144, "keyLabel": "V"})" },
        JsonRow { "keyCodeAsFraction", R"({"keyCode": 9.5, "modifiers": 6144, "keyLabel": "V"})" },
        JsonRow { "negativeKeyCode", R"({"keyCode": -1, "modifiers": 6144, "keyLabel": "V"})" },
        JsonRow { "keyCodeBeyond32Bits", R"({"keyCode": 4294967296, "modifiers": 6144, "keyLabel": "V"})" },
        JsonRow { "hugeModifiers", R"({"keyCode": 9, "modifiers": 18446744073709551615, "keyLabel": "V"})" },
        JsonRow { "unusedModifierBit", R"({"keyCode": 9, "modifiers": 7168, "keyLabel": "V"})" },
        JsonRow { "labelAsNumber", R"({"keyCode": 9, "modifiers": 6144, "keyLabel": 86})" },
        JsonRow { "emptyLabel", R"({"keyCode": 9, "modifiers": 6144, "keyLabel": ""})" }),
    [](const testing::TestParamInfo<JsonRow>& row) { return std::string(row.param.name); });

TEST(Shortcut, FromJsonAcceptsSignedNumbersBuiltInCode)
{
    nlohmann::json json { { "keyCode", static_cast<int>(9) }, { "modifiers", static_cast<int>(6144) }, { "keyLabel", "V" } };
    EXPECT_EQ(Shortcut::fromJson(json), (Shortcut { 9, 6144, "V" }));
}

TEST(Shortcut, FromJsonRefusesLabelsThatAreNotUtf8)
{
    nlohmann::json json { { "keyCode", 9 }, { "modifiers", 6144 }, { "keyLabel", std::string("\xc3") } };
    EXPECT_EQ(Shortcut::fromJson(json), std::nullopt);
}

} // namespace
} // namespace quillmar
