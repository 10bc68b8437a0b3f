#include <gtest/gtest.h>

#include "core/capture/Bitmap.h"

namespace quillmar {
namespace {

std::vector<std::uint8_t> bytes(std::size_t count)
{
    std::vector<std::uint8_t> result(count);
    for (std::size_t i = 0; i < count; ++i)
        result[i] = static_cast<std::uint8_t>(i);
    return result;
}

struct CreateRow {
    const char* name;
    int width;
    int height;
    int bytesPerRow;
    std::size_t byteCount;
    const char* code; // empty when the bitmap is made
};

void PrintTo(const CreateRow& row, std::ostream* out)
{
    *out << row.name;
}

class BitmapCreate : public testing::TestWithParam<CreateRow> { };

TEST_P(BitmapCreate, ChecksItsSizes)
{
    const auto& row = GetParam();
    auto bitmap = Bitmap::create(row.width, row.height, row.bytesPerRow, bytes(row.byteCount));
    if (std::string_view(row.code).empty())
        EXPECT_TRUE(bitmap.ok()) << bitmap.error().code;
    else
        EXPECT_EQ(bitmap.ok() ? std::string() : bitmap.error().code, row.code);
}

INSTANTIATE_TEST_SUITE_P(Table, BitmapCreate,
    testing::Values(
        CreateRow { "tight", 3, 2, 12, 24, "" },
        CreateRow { "paddedRows", 3, 2, 16, 32, "" },
        CreateRow { "lastRowMayLackNothing", 3, 2, 16, 31, "bitmap.truncated" },
        CreateRow { "zeroWidth", 0, 2, 0, 0, "bitmap.empty" },
        CreateRow { "negativeHeight", 3, -1, 12, 0, "bitmap.empty" },
        CreateRow { "rowsShorterThanWidth", 3, 2, 11, 24, "bitmap.shortRows" },
        CreateRow { "tooWide", Bitmap::maximumSide + 1, 1, (Bitmap::maximumSide + 1) * 4, 0, "bitmap.tooLarge" }),
    [](const testing::TestParamInfo<CreateRow>& row) { return std::string(row.param.name); });

TEST(Bitmap, ImageCopiesRowsTightlyAndIgnoresPadding)
{
    auto padded = Bitmap::create(2, 3, 10, bytes(30)).value();
    auto middle = padded.image({ 1, 3 });
    ASSERT_EQ(middle.height(), 2);
    EXPECT_EQ(middle.bytesPerRow(), 8);
    EXPECT_EQ(std::vector<std::uint8_t>(middle.row(0), middle.row(0) + 8), std::vector<std::uint8_t>(padded.row(1), padded.row(1) + 8));
    EXPECT_EQ(std::vector<std::uint8_t>(middle.row(1), middle.row(1) + 8), std::vector<std::uint8_t>(padded.row(2), padded.row(2) + 8));

    auto tight = padded.image({ 0, 3 });
    EXPECT_TRUE(tight.samePixels(padded));
    EXPECT_FALSE(tight.samePixels(middle));
}

} // namespace
} // namespace quillmar
