#include <gtest/gtest.h>

#include "core/capture/PngCodec.h"
#include "tests/capture/PngTestImages.h"

namespace quillmar {
namespace {

using testing_support::RawPng;

Bitmap sample(int width, int height)
{
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(width * height * 4));
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = static_cast<std::uint8_t>(i * 37 + i / 7);
    return Bitmap::create(width, height, width * 4, std::move(pixels)).value();
}

std::vector<int> pixelAt(const Bitmap& bitmap, int x, int y)
{
    const auto* p = bitmap.row(y) + 4 * x;
    return { p[0], p[1], p[2], p[3] };
}

// Rewrites the IHDR size of a valid PNG and fixes the chunk's CRC, so only the size is wrong.
std::string withHeaderSize(std::string png, std::uint32_t width, std::uint32_t height)
{
    for (int i = 0; i < 4; ++i) {
        png[16 + static_cast<std::size_t>(i)] = static_cast<char>(width >> (24 - 8 * i));
        png[20 + static_cast<std::size_t>(i)] = static_cast<char>(height >> (24 - 8 * i));
    }
    auto crc = testing_support::chunkCrc(png.substr(12, 17));
    for (int i = 0; i < 4; ++i)
        png[29 + static_cast<std::size_t>(i)] = static_cast<char>(crc >> (24 - 8 * i));
    return png;
}

TEST(PngCodec, RoundTripKeepsEveryByteIncludingAlpha)
{
    auto original = sample(7, 5);
    auto encoded = encodePng(original);
    ASSERT_TRUE(encoded.ok());
    auto decoded = decodePng(*encoded);
    ASSERT_TRUE(decoded.ok()) << decoded.error().context;
    EXPECT_TRUE(decoded->samePixels(original));
}

TEST(PngCodec, PaddedRowsAreWrittenWithoutTheirPadding)
{
    auto padded = Bitmap::create(2, 2, 12, std::vector<std::uint8_t>(24, 0x5a)).value();
    auto decoded = decodePng(*encodePng(padded));
    ASSERT_TRUE(decoded.ok());
    EXPECT_EQ(decoded->bytesPerRow(), 8);
    EXPECT_TRUE(decoded->samePixels(padded));
}

struct ConversionRow {
    const char* name;
    RawPng file;
    std::vector<int> firstPixel;
    std::vector<int> lastPixel;
};

void PrintTo(const ConversionRow& row, std::ostream* out)
{
    *out << row.name;
}

class PngConversion : public testing::TestWithParam<ConversionRow> { };

TEST_P(PngConversion, GivesRgba)
{
    const auto& row = GetParam();
    auto bytes = testing_support::encodeRaw(row.file);
    ASSERT_FALSE(bytes.empty());
    auto decoded = decodePng(bytes);
    ASSERT_TRUE(decoded.ok()) << decoded.error().context;
    ASSERT_EQ(decoded->width(), row.file.width);
    ASSERT_EQ(decoded->height(), row.file.height);
    EXPECT_EQ(pixelAt(*decoded, 0, 0), row.firstPixel);
    EXPECT_EQ(pixelAt(*decoded, row.file.width - 1, row.file.height - 1), row.lastPixel);
}

INSTANTIATE_TEST_SUITE_P(Table, PngConversion,
    testing::Values(
        ConversionRow { "rgbGetsOpaqueAlpha", { 2, 1, PNG_COLOR_TYPE_RGB, 8, PNG_INTERLACE_NONE, {}, {}, { { 1, 2, 3, 4, 5, 6 } } },
            { 1, 2, 3, 255 }, { 4, 5, 6, 255 } },
        ConversionRow { "greyBecomesRgb", { 2, 1, PNG_COLOR_TYPE_GRAY, 8, PNG_INTERLACE_NONE, {}, {}, { { 0, 200 } } },
            { 0, 0, 0, 255 }, { 200, 200, 200, 255 } },
        ConversionRow { "oneBitGreyIsExpanded", { 3, 1, PNG_COLOR_TYPE_GRAY, 1, PNG_INTERLACE_NONE, {}, {}, { { 0b10100000 } } },
            { 255, 255, 255, 255 }, { 255, 255, 255, 255 } },
        ConversionRow { "greyWithAlpha", { 1, 1, PNG_COLOR_TYPE_GRAY_ALPHA, 8, PNG_INTERLACE_NONE, {}, {}, { { 90, 10 } } },
            { 90, 90, 90, 10 }, { 90, 90, 90, 10 } },
        ConversionRow { "sixteenBitsAreStripped", { 1, 1, PNG_COLOR_TYPE_RGB_ALPHA, 16, PNG_INTERLACE_NONE, {}, {},
                                                      { { 0x12, 0x34, 0xab, 0xcd, 0xff, 0x00, 0x80, 0x00 } } },
            { 0x12, 0xab, 0xff, 0x80 }, { 0x12, 0xab, 0xff, 0x80 } },
        ConversionRow { "paletteWithTransparency",
            { 2, 1, PNG_COLOR_TYPE_PALETTE, 8, PNG_INTERLACE_NONE, { { 10, 20, 30 }, { 40, 50, 60 } }, { 0 }, { { 0, 1 } } },
            { 10, 20, 30, 0 }, { 40, 50, 60, 255 } },
        ConversionRow { "paletteWithoutTransparency",
            { 2, 1, PNG_COLOR_TYPE_PALETTE, 8, PNG_INTERLACE_NONE, { { 10, 20, 30 }, { 40, 50, 60 } }, {}, { { 1, 0 } } },
            { 40, 50, 60, 255 }, { 10, 20, 30, 255 } },
        ConversionRow { "interlacedRowsAreAssembled",
            { 3, 3, PNG_COLOR_TYPE_RGB, 8, PNG_INTERLACE_ADAM7, {}, {},
                { { 1, 1, 1, 2, 2, 2, 3, 3, 3 }, { 4, 4, 4, 5, 5, 5, 6, 6, 6 }, { 7, 7, 7, 8, 8, 8, 9, 9, 9 } } },
            { 1, 1, 1, 255 }, { 9, 9, 9, 255 } }),
    [](const testing::TestParamInfo<ConversionRow>& row) { return std::string(row.param.name); });

TEST(PngCodec, EveryTruncationIsAnErrorNotACrash)
{
    auto whole = *encodePng(sample(9, 9));
    for (std::size_t length = 0; length < whole.size(); ++length) {
        auto decoded = decodePng(std::string_view(whole).substr(0, length));
        ASSERT_FALSE(decoded.ok()) << "prefix of " << length << " bytes";
        EXPECT_EQ(decoded.error().message, length < 8 ? "The file is not a PNG image." : "The PNG image could not be read.");
    }
}

struct MalformedRow {
    const char* name;
    std::string bytes;
};

void PrintTo(const MalformedRow& row, std::ostream* out)
{
    *out << row.name;
}

class PngMalformed : public testing::TestWithParam<MalformedRow> { };

TEST_P(PngMalformed, IsAnError)
{
    EXPECT_FALSE(decodePng(GetParam().bytes).ok());
}

std::string damagedData()
{
    auto png = *encodePng(sample(16, 16));
    png[png.size() - 20] = static_cast<char>(png[png.size() - 20] ^ 0x55); // inside IDAT, so its CRC fails
    return png;
}

INSTANTIATE_TEST_SUITE_P(Table, PngMalformed,
    testing::Values(
        MalformedRow { "empty", "" },
        MalformedRow { "text", "this is not an image at all" },
        MalformedRow { "hugeClaimedSizeRefusedBeforeAllocating", withHeaderSize(*encodePng(sample(1, 1)), 100000, 100000) },
        MalformedRow { "widthAboveTheLimit", withHeaderSize(*encodePng(sample(1, 1)), Bitmap::maximumSide + 1, 1) },
        MalformedRow { "zeroWidth", withHeaderSize(*encodePng(sample(1, 1)), 0, 1) },
        MalformedRow { "moreRowsClaimedThanStored", withHeaderSize(*encodePng(sample(1, 1)), 1, 5000) },
        MalformedRow { "damagedImageData", damagedData() }),
    [](const testing::TestParamInfo<MalformedRow>& row) { return std::string(row.param.name); });

} // namespace
} // namespace quillmar
