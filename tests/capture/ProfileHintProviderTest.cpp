#include <gtest/gtest.h>

#include "core/capture/ProfileHintProvider.h"
#include "tests/capture/GeneratedPage.h"

namespace quillmar {
namespace {

using testing_support::GeneratedPage;

struct SizeRow {
    const char* name;
    int width;
    int height;
    int scaledWidth;
    int scaledHeight;
};

void PrintTo(const SizeRow& row, std::ostream* out)
{
    *out << row.name;
}

class ProfileHintScale : public testing::TestWithParam<SizeRow> { };

TEST_P(ProfileHintScale, KeepsTheAspect)
{
    const auto& row = GetParam();
    EXPECT_EQ(ProfileHintProvider::scaledWidth(row.width), row.scaledWidth);
    EXPECT_EQ(ProfileHintProvider::scaledHeight(row.width, row.height), row.scaledHeight);
}

INSTANTIATE_TEST_SUITE_P(Table, ProfileHintScale,
    testing::Values(
        SizeRow { "narrowFramesAreNotScaled", 320, 300, 320, 300 },
        SizeRow { "exactly640IsNotScaled", 640, 480, 640, 480 },
        SizeRow { "from641ItIsScaled", 641, 400, 640, 399 },
        SizeRow { "halfOf1280", 1280, 800, 640, 400 },
        SizeRow { "halfRowRoundsUp", 1280, 801, 640, 401 },
        SizeRow { "quarterOf2560", 2560, 1600, 640, 400 },
        SizeRow { "tallNarrowStripKeepsARow", 6400, 5, 640, 1 }),
    [](const testing::TestParamInfo<SizeRow>& row) { return std::string(row.param.name); });

struct ShiftRow {
    const char* name;
    int width;
    int frameHeight;
    int shift;
};

void PrintTo(const ShiftRow& row, std::ostream* out)
{
    *out << row.name;
}

class ProfileHintShift : public testing::TestWithParam<ShiftRow> { };

TEST_P(ProfileHintShift, FindsTheScrollInFullResolutionRows)
{
    const auto& row = GetParam();
    GeneratedPage page(row.width, 2 * row.frameHeight + 400, 17);
    ProfileHintProvider hints;
    auto reference = hints.prepare(page.frame(200, row.frameHeight));
    auto current = hints.prepare(page.frame(200 + row.shift, row.frameHeight));
    ASSERT_TRUE(reference && current);
    auto shift = hints.shift(*reference, *current);
    ASSERT_TRUE(shift.has_value());
    // Measured on scaled rows, the estimate may be a row off; the row match settles it.
    EXPECT_NEAR(*shift, row.shift, row.width > ProfileHintProvider::maximumWidth ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(Table, ProfileHintShift,
    testing::Values(
        ShiftRow { "unscaledStill", 320, 300, 0 },
        ShiftRow { "unscaledSmall", 320, 300, 9 },
        ShiftRow { "unscaledLarge", 320, 300, 200 },
        ShiftRow { "halfScaleStill", 1280, 800, 0 },
        ShiftRow { "halfScaleOddRows", 1280, 800, 1 },
        ShiftRow { "halfScaleEvenRows", 1280, 800, 64 },
        ShiftRow { "halfScaleOddLarge", 1280, 800, 333 },
        ShiftRow { "quarterScale", 2560, 1600, 123 }),
    [](const testing::TestParamInfo<ShiftRow>& row) { return std::string(row.param.name); });

TEST(ProfileHintProvider, RoundsTheScaledShiftBackToFullRows)
{
    // 1280 × 801 is registered at 640 × 401: a scroll of 200 scaled rows is 200 × 801 / 401 = 399.5,
    // which rounds to 400 full rows. The frames are made at 640 wide and stretched, so the shift on the
    // scaled frames is exactly what the test sets.
    GeneratedPage page(640, 1400, 23);
    auto stretch = [](const Bitmap& narrow, int height) {
        std::vector<std::uint8_t> pixels(static_cast<std::size_t>(1280 * height * 4));
        for (int y = 0; y < height; ++y) {
            const auto* source = narrow.row(std::min(narrow.height() - 1, y * narrow.height() / height));
            for (int x = 0; x < 1280; ++x)
                std::memcpy(pixels.data() + (static_cast<std::size_t>(y) * 1280 + static_cast<std::size_t>(x)) * 4, source + (x / 2) * 4, 4);
        }
        return Bitmap::create(1280, height, 1280 * 4, std::move(pixels)).value();
    };
    ProfileHintProvider hints;
    auto reference = hints.prepare(stretch(page.frame(0, 401), 801));
    auto current = hints.prepare(stretch(page.frame(200, 401), 801));
    auto shift = hints.shift(*reference, *current);
    ASSERT_TRUE(shift.has_value());
    EXPECT_NEAR(*shift, 400, 1);
}

TEST(ProfileHintProvider, NoHintWithoutSomethingToRegister)
{
    ProfileHintProvider hints;
    auto blank = hints.prepare(Bitmap::filled(320, 300, 0xffffffffu).value());
    ASSERT_TRUE(blank);
    EXPECT_FALSE(hints.shift(*blank, *blank).has_value()) << "a uniform frame lines up at every shift";

    GeneratedPage page(320, 1200, 29);
    auto tall = hints.prepare(page.frame(0, 300));
    auto short_ = hints.prepare(page.frame(0, 200));
    EXPECT_FALSE(hints.shift(*tall, *short_).has_value()) << "frames of different sizes";

    auto far = hints.prepare(page.frame(800, 300));
    EXPECT_FALSE(hints.shift(*tall, *far).has_value()) << "no overlap: nothing lines up";

    EXPECT_EQ(hints.prepare(Bitmap::filled(7, 300, 0xffffffffu).value()), nullptr) << "narrower than its bands";
}

} // namespace
} // namespace quillmar
