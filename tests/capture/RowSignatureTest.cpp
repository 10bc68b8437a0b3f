#include <gtest/gtest.h>

#include <map>

#include "core/capture/RowSignature.h"
#include "tests/capture/GeneratedPage.h"

namespace quillmar {
namespace {

void setPixel(Bitmap& bitmap, int x, int y, std::uint32_t rgba)
{
    auto* p = bitmap.row(y) + 4 * x;
    p[0] = static_cast<std::uint8_t>(rgba >> 24);
    p[1] = static_cast<std::uint8_t>(rgba >> 16);
    p[2] = static_cast<std::uint8_t>(rgba >> 8);
    p[3] = static_cast<std::uint8_t>(rgba);
}

TEST(RowSignature, UniformRowsAreFlaggedAndOneDifferentPixelUnflagsThem)
{
    auto bitmap = Bitmap::filled(100, 4, 0xffffffffu).value();
    setPixel(bitmap, 50, 1, 0xfffffffeu); // only alpha differs
    setPixel(bitmap, 6, 2, 0x000000ffu); // first hashed column
    setPixel(bitmap, 93, 3, 0x000000ffu); // last hashed column
    auto rows = rowSignatures(bitmap);
    ASSERT_EQ(rows.size(), 4u);
    EXPECT_TRUE(rows[0].flagged);
    EXPECT_FALSE(rows[1].flagged);
    EXPECT_FALSE(rows[2].flagged);
    EXPECT_FALSE(rows[3].flagged);
}

TEST(RowSignature, SideBandsAreLeftOutOfHashAndFlag)
{
    // A 100-pixel row leaves out 6 pixels at each side.
    auto plain = Bitmap::filled(100, 2, 0xffffffffu).value();
    setPixel(plain, 40, 0, 0x102030ffu);
    setPixel(plain, 40, 1, 0x102030ffu);
    auto withThumb = plain.image({ 0, 2 });
    setPixel(withThumb, 0, 0, 0x707070ffu);
    setPixel(withThumb, 96, 0, 0x707070ffu);
    setPixel(withThumb, 99, 1, 0x707070ffu);
    EXPECT_EQ(rowSignatures(withThumb), rowSignatures(plain));

    setPixel(withThumb, 93, 1, 0x707070ffu); // inside the hashed columns
    EXPECT_NE(rowSignatures(withThumb)[1], rowSignatures(plain)[1]);

    auto blank = Bitmap::filled(100, 1, 0xffffffffu).value();
    setPixel(blank, 97, 0, 0x707070ffu);
    EXPECT_TRUE(rowSignatures(blank)[0].flagged) << "a row that is blank but for a thumb is still blank";
}

TEST(RowSignature, SameContentSameHashAcrossFramesAndPaddedRows)
{
    testing_support::GeneratedPage page(320, 600);
    auto top = rowSignatures(page.frame(0, 300));
    auto lower = rowSignatures(page.frame(37, 300));
    for (int i = 0; i < 263; ++i)
        EXPECT_EQ(lower[static_cast<std::size_t>(i)], top[static_cast<std::size_t>(i + 37)]) << "row " << i;

    auto frame = page.frame(0, 10);
    std::vector<std::uint8_t> padded(static_cast<std::size_t>(10 * 1300), 0xee);
    for (int y = 0; y < 10; ++y)
        std::copy(frame.row(y), frame.row(y) + 1280, padded.begin() + y * 1300);
    EXPECT_EQ(rowSignatures(Bitmap::create(320, 10, 1300, std::move(padded)).value()), rowSignatures(frame));
}

TEST(RowSignature, TextRowsOfAGeneratedPageDifferFromEachOther)
{
    testing_support::GeneratedPage page(320, 3000);
    auto rows = rowSignatures(page.page());
    std::map<std::uint64_t, int> seen;
    int unflagged = 0;
    for (const auto& row : rows) {
        if (!row.flagged) {
            ++unflagged;
            ++seen[row.hash];
        }
    }
    EXPECT_GT(unflagged, 1500);
    EXPECT_EQ(static_cast<int>(seen.size()), unflagged) << "no two text rows share a hash";
}

} // namespace
} // namespace quillmar
