#include <gtest/gtest.h>

#include "core/capture/StitchPlan.h"

namespace quillmar {
namespace {

std::shared_ptr<const Bitmap> frame(int height, std::uint8_t tag)
{
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(height) * 8);
    for (int y = 0; y < height; ++y)
        std::fill_n(pixels.begin() + y * 8, 8, static_cast<std::uint8_t>(tag + y));
    return std::make_shared<const Bitmap>(Bitmap::create(2, height, 8, std::move(pixels)).value());
}

// Each segment as (first byte of its first row, row count): which frame and rows it shows.
std::vector<std::pair<int, int>> layout(const StitchPlan& plan)
{
    std::vector<std::pair<int, int>> result;
    for (const auto& segment : plan.segments())
        result.emplace_back(segment.frame->row(segment.rows.begin)[0], segment.rows.count());
    return result;
}

TEST(StitchPlan, StartsWithTheWholeFirstFrame)
{
    StitchPlan plan(frame(10, 0));
    EXPECT_EQ(plan.totalHeight(), 10);
    EXPECT_EQ(plan.width(), 2);
    EXPECT_EQ(plan.frameHeight(), 10);
    EXPECT_EQ(layout(plan), (std::vector<std::pair<int, int>> { { 0, 10 } }));
    EXPECT_TRUE(StitchPlan().empty());
}

TEST(StitchPlan, AppendAddsTheLastShiftRows)
{
    StitchPlan plan(frame(10, 0));
    plan.append(frame(10, 100), 3, 0);
    EXPECT_EQ(plan.totalHeight(), 13);
    EXPECT_EQ(layout(plan), (std::vector<std::pair<int, int>> { { 0, 10 }, { 107, 3 } }));
}

TEST(StitchPlan, StaticFooterIsReplacedSoItAppearsOnceAtTheBottom)
{
    StitchPlan plan(frame(10, 0));
    plan.append(frame(10, 100), 3, 2);
    // The first frame loses its 2 footer rows; the new frame adds 3 rows above its footer, then the footer.
    EXPECT_EQ(plan.totalHeight(), 13);
    EXPECT_EQ(layout(plan), (std::vector<std::pair<int, int>> { { 0, 8 }, { 105, 5 } }));
}

TEST(StitchPlan, FooterTallerThanTheLastSegmentReachesIntoEarlierOnes)
{
    StitchPlan plan(frame(10, 0));
    plan.append(frame(10, 100), 1, 0);
    plan.append(frame(10, 200), 2, 3);
    EXPECT_EQ(plan.totalHeight(), 13);
    EXPECT_EQ(layout(plan), (std::vector<std::pair<int, int>> { { 0, 8 }, { 205, 5 } }));
}

TEST(StitchPlan, OnlyTheNewestSegmentKeepsItsWholeFrame)
{
    StitchPlan plan(frame(10, 0));
    plan.append(frame(10, 100), 4, 1);
    plan.append(frame(10, 200), 4, 1);
    ASSERT_EQ(plan.segments().size(), 3u);
    EXPECT_EQ(plan.segments()[0].frame->height(), 9);
    EXPECT_EQ(plan.segments()[1].frame->height(), 4);
    EXPECT_EQ(plan.segments()[1].rows, (RowRange { 0, 4 }));
    EXPECT_EQ(plan.segments()[2].frame->height(), 10);
    EXPECT_EQ(layout(plan), (std::vector<std::pair<int, int>> { { 0, 9 }, { 105, 4 }, { 205, 5 } }));
}

TEST(StitchPlan, ShiftAndFooterTogetherNeverReachAboveTheFrame)
{
    StitchPlan plan(frame(10, 0));
    plan.append(frame(10, 100), 9, 3);
    EXPECT_EQ(layout(plan), (std::vector<std::pair<int, int>> { { 0, 7 }, { 100, 10 } }));
    EXPECT_EQ(plan.totalHeight(), 17);
}

} // namespace
} // namespace quillmar
