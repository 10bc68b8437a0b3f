#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/hardware/smc/SMCCodec.h"

namespace quillmar {
namespace {

using Bytes = std::vector<std::uint8_t>;

struct DecodeRow {
    const char* name;
    const char* type;
    Bytes bytes;
    std::optional<double> expected;
};

class SMCCodecDecode : public testing::TestWithParam<DecodeRow> { };

TEST_P(SMCCodecDecode, Reads)
{
    EXPECT_EQ(SMCCodec::decode(GetParam().bytes, GetParam().type), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Table, SMCCodecDecode,
    testing::Values(
        DecodeRow { "fpe2HasTwoFractionBits", "fpe2", { 0x19, 0x00 }, 1600.0 },
        DecodeRow { "fp88HalfwayFraction", "fp88", { 0x01, 0x80 }, 1.5 },
        DecodeRow { "fp4cTwelveFractionBits", "fp4c", { 0xF0, 0x00 }, 15.0 },
        DecodeRow { "sp78Positive", "sp78", { 0x2A, 0x80 }, 42.5 },
        DecodeRow { "sp78NegativeIsTwosComplement", "sp78", { 0xFE, 0x80 }, -1.5 },
        DecodeRow { "sp78OnlyFirstTwoBytesCount", "sp78", { 0x01, 0x00, 0xFF }, 1.0 },
        DecodeRow { "sp88SumsToSixteenAndIsNoType", "sp88", { 0x01, 0x00 }, std::nullopt },
        DecodeRow { "fp78SumsToFifteenAndIsNoType", "fp78", { 0x01, 0x00 }, std::nullopt },
        DecodeRow { "fixedPointWithNonHexDigitIsNoType", "fpg0", { 0x01, 0x00 }, std::nullopt },
        DecodeRow { "fixedPointNeedsTwoBytes", "fpe2", { 0x19 }, std::nullopt },
        DecodeRow { "floatIsLittleEndian", "flt ", { 0x00, 0x00, 0xE1, 0x44 }, 1800.0 },
        DecodeRow { "floatFromMoreBytesUsesFirstFour", "flt ", { 0x00, 0x00, 0x80, 0x3F, 0x55 }, 1.0 },
        DecodeRow { "floatNaNIsNone", "flt ", { 0x00, 0x00, 0xC0, 0x7F }, std::nullopt },
        DecodeRow { "floatInfinityIsNone", "flt ", { 0x00, 0x00, 0x80, 0x7F }, std::nullopt },
        DecodeRow { "floatNeedsFourBytes", "flt ", { 0x00, 0x00, 0x80 }, std::nullopt },
        DecodeRow { "ioftIsLittleEndianWithSixteenFractionBits", "ioft", { 0x00, 0x80, 0x03, 0, 0, 0, 0, 0 }, 3.5 },
        DecodeRow { "ioftNeedsEightBytes", "ioft", { 0x00, 0x80, 0x03, 0, 0, 0, 0 }, std::nullopt },
        DecodeRow { "ui8IsByteZero", "ui8 ", { 0xFE, 0x01 }, 254.0 },
        DecodeRow { "flagIsByteZero", "flag", { 0x01 }, 1.0 },
        DecodeRow { "ui16IsBigEndian", "ui16", { 0x12, 0x34 }, 4660.0 },
        DecodeRow { "ui32IsBigEndian", "ui32", { 0xFF, 0xFF, 0xFF, 0xFF }, 4294967295.0 },
        DecodeRow { "ui32NeedsFourBytes", "ui32", { 0x00, 0x00, 0x01 }, std::nullopt },
        DecodeRow { "si8IsSigned", "si8 ", { 0xFF }, -1.0 },
        DecodeRow { "si16IsSignedBigEndian", "si16", { 0x80, 0x00 }, -32768.0 },
        DecodeRow { "emptyInputIsNone", "ui8 ", {}, std::nullopt },
        DecodeRow { "unknownTypeIsNone", "ch8*", { 0x41 }, std::nullopt },
        DecodeRow { "typeWithoutItsSpaceIsNone", "ui8", { 0x41 }, std::nullopt }),
    [](const testing::TestParamInfo<DecodeRow>& row) { return std::string(row.param.name); });

struct EncodeRow {
    const char* name;
    double value;
    const char* type;
    std::size_t size;
    std::optional<Bytes> expected;
};

class SMCCodecEncode : public testing::TestWithParam<EncodeRow> { };

TEST_P(SMCCodecEncode, Writes)
{
    EXPECT_EQ(SMCCodec::encode(GetParam().value, GetParam().type, GetParam().size), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Table, SMCCodecEncode,
    testing::Values(
        EncodeRow { "floatIsLittleEndian", 1800.0, "flt ", 4, Bytes { 0x00, 0x00, 0xE1, 0x44 } },
        EncodeRow { "floatOfOtherSizeIsNone", 1800.0, "flt ", 2, std::nullopt },
        EncodeRow { "floatBeyondItsRangeIsNone", 1e39, "flt ", 4, std::nullopt },
        EncodeRow { "ui8Rounds", 254.6, "ui8 ", 1, Bytes { 0xFF } },
        EncodeRow { "ui8RoundsDownBelowHalf", 0.4, "ui8 ", 1, Bytes { 0x00 } },
        EncodeRow { "ui8RoundedPast255IsNone", 255.5, "ui8 ", 1, std::nullopt },
        EncodeRow { "ui8NegativeIsNone", -1.0, "ui8 ", 1, std::nullopt },
        EncodeRow { "flagIsOneByte", 1.0, "flag", 1, Bytes { 0x01 } },
        EncodeRow { "ui8OfTwoBytesIsNone", 1.0, "ui8 ", 2, std::nullopt },
        EncodeRow { "ui16IsBigEndian", 4660.0, "ui16", 2, Bytes { 0x12, 0x34 } },
        EncodeRow { "ui16Past65535IsNone", 65536.0, "ui16", 2, std::nullopt },
        EncodeRow { "ui32TopValue", 4294967295.0, "ui32", 4, Bytes { 0xFF, 0xFF, 0xFF, 0xFF } },
        EncodeRow { "ui32PastTopIsNone", 4294967296.0, "ui32", 4, std::nullopt },
        EncodeRow { "fpe2", 1600.0, "fpe2", 2, Bytes { 0x19, 0x00 } },
        EncodeRow { "fpe2RoundsToItsQuarterStep", 1600.2, "fpe2", 2, Bytes { 0x19, 0x01 } },
        EncodeRow { "fpe2NegativeIsNone", -0.5, "fpe2", 2, std::nullopt },
        EncodeRow { "sp78Negative", -1.5, "sp78", 2, Bytes { 0xFE, 0x80 } },
        EncodeRow { "sp78Lowest", -128.0, "sp78", 2, Bytes { 0x80, 0x00 } },
        EncodeRow { "sp88IsNoType", 1.0, "sp88", 2, std::nullopt },
        EncodeRow { "nanIsNone", std::nan(""), "ui8 ", 1, std::nullopt },
        EncodeRow { "infinityIsNone", std::numeric_limits<double>::infinity(), "flt ", 4, std::nullopt },
        EncodeRow { "si16IsOnlyRead", 1.0, "si16", 2, std::nullopt },
        EncodeRow { "ioftIsOnlyRead", 1.0, "ioft", 8, std::nullopt }),
    [](const testing::TestParamInfo<EncodeRow>& row) { return std::string(row.param.name); });

struct MaximumRow {
    const char* name;
    const char* type;
    std::size_t size;
    std::optional<double> expected;
};

class SMCCodecMaximum : public testing::TestWithParam<MaximumRow> { };

TEST_P(SMCCodecMaximum, Is)
{
    EXPECT_EQ(SMCCodec::maximum(GetParam().type, GetParam().size), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Table, SMCCodecMaximum,
    testing::Values(
        MaximumRow { "floatOfFourBytes", "flt ", 4, static_cast<double>(std::numeric_limits<float>::max()) },
        MaximumRow { "floatOfOtherSize", "flt ", 8, std::nullopt },
        MaximumRow { "ui8", "ui8 ", 1, 255.0 },
        MaximumRow { "flag", "flag", 1, 255.0 },
        MaximumRow { "ui16", "ui16", 2, 65535.0 },
        MaximumRow { "ui32", "ui32", 4, 4294967295.0 },
        MaximumRow { "fpe2", "fpe2", 2, 16383.75 },
        MaximumRow { "fp88", "fp88", 2, 65535.0 / 256 },
        MaximumRow { "sp78", "sp78", 2, 32767.0 / 256 },
        MaximumRow { "sp1e", "sp1e", 2, 32767.0 / 16384 },
        MaximumRow { "invalidFixedPoint", "fp7a", 2, std::nullopt },
        MaximumRow { "readOnlyType", "si8 ", 1, std::nullopt },
        MaximumRow { "unknownType", "hex_", 4, std::nullopt }),
    [](const testing::TestParamInfo<MaximumRow>& row) { return std::string(row.param.name); });

TEST(SMCCodec, SizeIsTheByteCountOfTheTypesValues)
{
    EXPECT_EQ(SMCCodec::size("flt "), 4u);
    EXPECT_EQ(SMCCodec::size("ioft"), 8u);
    EXPECT_EQ(SMCCodec::size("flag"), 1u);
    EXPECT_EQ(SMCCodec::size("si16"), 2u);
    EXPECT_EQ(SMCCodec::size("sp78"), 2u);
    EXPECT_FALSE(SMCCodec::size("sp88"));
    EXPECT_FALSE(SMCCodec::size("ch8*"));
}

// Every fixed-point type there is: what encodes decodes to the value rounded to the type's step.
TEST(SMCCodec, EveryValidFixedPointTypeRoundTripsItsMaximumAndASmallValue)
{
    const char* digits = "0123456789abcdef";
    int validTypes = 0;
    for (char sign : { 'f', 's' }) {
        for (int integerBits = 0; integerBits < 16; ++integerBits) {
            for (int fractionBits = 0; fractionBits < 16; ++fractionBits) {
                std::string type { sign, 'p', digits[integerBits], digits[fractionBits] };
                bool valid = integerBits + fractionBits == (sign == 's' ? 15 : 16);
                auto maximum = SMCCodec::maximum(type, 2);
                ASSERT_EQ(maximum.has_value(), valid) << type;
                if (!valid)
                    continue;
                ++validTypes;
                auto top = SMCCodec::encode(*maximum, type, 2);
                ASSERT_TRUE(top) << type;
                EXPECT_EQ(SMCCodec::decode(*top, type), *maximum) << type;
                EXPECT_FALSE(SMCCodec::encode(*maximum + std::ldexp(1.0, -fractionBits), type, 2)) << type;
                auto one = SMCCodec::encode(1.0, type, 2);
                if (one) {
                    EXPECT_EQ(SMCCodec::decode(*one, type), 1.0) << type;
                }
            }
        }
    }
    EXPECT_EQ(validTypes, 15 + 16);
}

} // namespace
} // namespace quillmar
