#include <gtest/gtest.h>

#include <string>

#include "core/windows/WindowLayout.h"

namespace quillmar {
namespace {

using L = WindowLayout;

constexpr Rect current { 30, 40, 500, 400 };

struct FrameRow {
    const char* name;
    WindowLayout layout;
    Rect area;
    double gap;
    Rect expected;
    Rect window = current; // the window's present frame
};

void PrintTo(const FrameRow& row, std::ostream* out)
{
    *out << row.name;
}

constexpr Rect plain { 0, 0, 1200, 900 };   // gap 0: halves 600, thirds 400
constexpr Rect gapped { 0, 0, 1240, 900 };  // gap 10: R = 10,10 1220 × 880; halves 605 × 435, thirds 400

const FrameRow frameRows[] = {
    { "LeftHalf", L::leftHalf, plain, 0, { 0, 0, 600, 900 } },
    { "RightHalf", L::rightHalf, plain, 0, { 600, 0, 600, 900 } },
    { "TopHalf", L::topHalf, plain, 0, { 0, 450, 1200, 450 } },
    { "BottomHalf", L::bottomHalf, plain, 0, { 0, 0, 1200, 450 } },
    { "TopLeft", L::topLeft, plain, 0, { 0, 450, 600, 450 } },
    { "TopRight", L::topRight, plain, 0, { 600, 450, 600, 450 } },
    { "BottomLeft", L::bottomLeft, plain, 0, { 0, 0, 600, 450 } },
    { "BottomRight", L::bottomRight, plain, 0, { 600, 0, 600, 450 } },
    { "FirstThird", L::firstThird, plain, 0, { 0, 0, 400, 900 } },
    { "CenterThirdStartsOneThirdIn", L::centerThird, plain, 0, { 400, 0, 400, 900 } },
    { "LastThird", L::lastThird, plain, 0, { 800, 0, 400, 900 } },
    { "FirstTwoThirds", L::firstTwoThirds, plain, 0, { 0, 0, 800, 900 } },
    { "LastTwoThirds", L::lastTwoThirds, plain, 0, { 400, 0, 800, 900 } },
    { "Maximize", L::maximize, plain, 0, { 0, 0, 1200, 900 } },
    { "AlmostMaximizeIsNinetyPercentCentred", L::almostMaximize, plain, 0, { 60, 45, 1080, 810 } },
    { "CenterKeepsTheSize", L::center, plain, 0, { 350, 250, 500, 400 } },

    { "LeftHalfGap", L::leftHalf, gapped, 10, { 10, 10, 605, 880 } },
    { "RightHalfGap", L::rightHalf, gapped, 10, { 625, 10, 605, 880 } },
    { "TopHalfGap", L::topHalf, gapped, 10, { 10, 455, 1220, 435 } },
    { "BottomHalfGap", L::bottomHalf, gapped, 10, { 10, 10, 1220, 435 } },
    { "TopLeftGap", L::topLeft, gapped, 10, { 10, 455, 605, 435 } },
    { "TopRightGap", L::topRight, gapped, 10, { 625, 455, 605, 435 } },
    { "BottomLeftGap", L::bottomLeft, gapped, 10, { 10, 10, 605, 435 } },
    { "BottomRightGap", L::bottomRight, gapped, 10, { 625, 10, 605, 435 } },
    { "FirstThirdGap", L::firstThird, gapped, 10, { 10, 10, 400, 880 } },
    { "CenterThirdGap", L::centerThird, gapped, 10, { 420, 10, 400, 880 } },
    { "LastThirdGap", L::lastThird, gapped, 10, { 830, 10, 400, 880 } },
    { "FirstTwoThirdsGap", L::firstTwoThirds, gapped, 10, { 10, 10, 810, 880 } },
    { "LastTwoThirdsGap", L::lastTwoThirds, gapped, 10, { 420, 10, 810, 880 } },
    { "MaximizeGap", L::maximize, gapped, 10, { 10, 10, 1220, 880 } },
    { "AlmostMaximizeGap", L::almostMaximize, gapped, 10, { 71, 54, 1098, 792 } },
    { "CenterGap", L::center, gapped, 10, { 370, 250, 500, 400 } },

    { "OffsetScreenBelowTheMainOne", L::leftHalf, { 1440, -180, 1920, 1080 }, 0, { 1440, -180, 960, 1080 } },
    { "CenterShrinksOnlyWhatDoesNotFit", L::center, { 0, 0, 400, 300 }, 0, { 0, 50, 400, 200 }, { 0, 0, 900, 200 } },
};

class LayoutFrameTest : public testing::TestWithParam<FrameRow> { };

TEST_P(LayoutFrameTest, MatchesTheTable)
{
    const auto& row = GetParam();
    EXPECT_EQ(layoutFrame(row.layout, row.area, row.window, row.gap), row.expected);
}

INSTANTIATE_TEST_SUITE_P(Layouts, LayoutFrameTest, testing::ValuesIn(frameRows),
    [](const testing::TestParamInfo<FrameRow>& row) { return std::string(row.param.name); });

TEST(LayoutFrame, HalvesTileTheAreaWithoutAGapAndKeepTheGapBetweenThemWithOne)
{
    Rect area { 0, 0, 1000, 700 };
    auto left = layoutFrame(L::leftHalf, area, current, 0);
    auto right = layoutFrame(L::rightHalf, area, current, 0);
    EXPECT_EQ(left.maxX(), right.minX());
    EXPECT_EQ(left.width + right.width, 1000);

    left = layoutFrame(L::leftHalf, area, current, 10);
    right = layoutFrame(L::rightHalf, area, current, 10);
    EXPECT_EQ(left.width, 485);
    EXPECT_EQ(right.width, 485);
    EXPECT_EQ(right.minX() - left.maxX(), 10);
    EXPECT_EQ(left.minX() - area.minX(), 10);
    EXPECT_EQ(area.maxX() - right.maxX(), 10);
}

TEST(LayoutFrame, ThirdsTileTheAreaInOrder)
{
    Rect area { 0, 0, 1200, 800 };
    auto first = layoutFrame(L::firstThird, area, current, 0);
    auto middle = layoutFrame(L::centerThird, area, current, 0);
    auto last = layoutFrame(L::lastThird, area, current, 0);
    EXPECT_EQ(first.maxX(), middle.minX());
    EXPECT_EQ(middle.maxX(), last.minX());
    EXPECT_EQ(last.maxX(), area.maxX());
    EXPECT_EQ(layoutFrame(L::firstTwoThirds, area, current, 0).maxX(), last.minX());
    EXPECT_EQ(layoutFrame(L::lastTwoThirds, area, current, 0).minX(), first.maxX());
}

TEST(LayoutFrame, CenterNeverEnlargesAWindow)
{
    Rect area { 0, 0, 1200, 900 };
    auto small = layoutFrame(L::center, area, { 0, 0, 300, 200 }, 0);
    EXPECT_EQ(small.size(), (Size { 300, 200 }));
    auto large = layoutFrame(L::center, area, { 0, 0, 3000, 2000 }, 0);
    EXPECT_EQ(large, area);
}

TEST(WindowLayouts, RawValuesRoundTripAndEachHasItsShortcutAction)
{
    for (auto layout : allWindowLayouts()) {
        SCOPED_TRACE(rawValue(layout));
        EXPECT_EQ(windowLayoutFromRawValue(rawValue(layout)), layout);
        EXPECT_FALSE(symbol(layout).empty());
        // Each layout has the shortcut action of the same name, whose title the heads-up display shows.
        EXPECT_EQ(rawValue(shortcutAction(layout)), rawValue(layout));
        EXPECT_EQ(windowLayout(shortcutAction(layout)), layout);
    }
}

TEST(WindowLayouts, UnknownRawValuesNameNoLayout)
{
    for (const char* raw : { "", "LeftHalf", "leftHalf ", "restore", "nextDisplay" }) {
        SCOPED_TRACE(raw);
        EXPECT_FALSE(windowLayoutFromRawValue(raw));
    }
    EXPECT_FALSE(windowLayout(ShortcutAction::restore));
    EXPECT_FALSE(windowLayout(ShortcutAction::togglePanel));
    EXPECT_EQ(title(shortcutAction(L::leftHalf)), "Left half");
}

TEST(Geometry, FlippingConvertsBetweenTopLeftAndBottomLeftAndBack)
{
    Rect topLeft { 100, 50, 300, 200 };
    EXPECT_EQ(topLeft.flipped(900), (Rect { 100, 650, 300, 200 }));
    EXPECT_EQ(topLeft.flipped(900).flipped(900), topLeft);
    EXPECT_EQ(flipped(Point { 5, 0 }, 900), (Point { 5, 900 }));
}

} // namespace
} // namespace quillmar
