#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/windows/PointerSamples.h"
#include "core/windows/SnapZones.h"

namespace quillmar {
namespace {

using L = WindowLayout;
using Zone = SnapZones::Zone;
using Config = SnapZones::Config;

constexpr Rect mainFrame { 0, 0, 1440, 900 };

enum class Displays { single, withLeftDisplay, withDisplayBelow };

std::vector<ScreenInfo> displays(Displays which)
{
    std::vector<ScreenInfo> list { { mainFrame, { 0, 0, 1440, 875 } } };
    if (which == Displays::withLeftDisplay)
        list.push_back({ { -1920, 0, 1920, 1080 }, { -1920, 0, 1920, 1080 } });
    if (which == Displays::withDisplayBelow)
        list.push_back({ { 0, -1080, 1440, 1080 }, { 0, -1080, 1440, 1080 } });
    return list;
}

constexpr Config defaults {};
constexpr Config topThirds { true, true, SnapZones::TopEdge::thirds, SnapZones::BottomEdge::off };
constexpr Config bottomHalf { true, true, SnapZones::TopEdge::maximize, SnapZones::BottomEdge::bottomHalf };
constexpr Config bottomThirds { true, true, SnapZones::TopEdge::maximize, SnapZones::BottomEdge::thirds };
constexpr Config noCorners { true, false, SnapZones::TopEdge::maximize, SnapZones::BottomEdge::off };
constexpr Config noSides { false, true, SnapZones::TopEdge::maximize, SnapZones::BottomEdge::off };

struct ZoneRow {
    const char* name;
    Point pointer; // bottom-left
    double speed;
    Config config;
    Displays displays;
    std::optional<Zone> expected;
};

const ZoneRow zoneRows[] = {
    { "LeftEdgeFivePointsAwaySnaps", { 5, 450 }, 0, defaults, Displays::single, Zone { L::leftHalf, 0 } },
    { "LeftEdgeSixPointsAwayDoesNot", { 6, 450 }, 0, defaults, Displays::single, std::nullopt },
    { "RightEdgeSixPointsAwayStillSnaps", { 1434, 450 }, 0, defaults, Displays::single, Zone { L::rightHalf, 0 } },
    { "RightEdgeSevenPointsAwayDoesNot", { 1433, 450 }, 0, defaults, Displays::single, std::nullopt },
    { "TopEdgeSixPointsAwayMaximizes", { 700, 894 }, 0, defaults, Displays::single, Zone { L::maximize, 0 } },
    { "TopEdgeSevenPointsAwayDoesNot", { 700, 893 }, 0, defaults, Displays::single, std::nullopt },
    { "TopEdgeThirdsCenter", { 700, 899 }, 0, topThirds, Displays::single, Zone { L::centerThird, 0 } },
    { "LeftEdgeWithinTwentyFourOfTheTopIsTheCorner", { 2, 876 }, 0, defaults, Displays::single, Zone { L::topLeft, 0 } },
    { "LeftEdgeTwentyFiveBelowTheTopIsTheHalf", { 2, 875 }, 0, defaults, Displays::single, Zone { L::leftHalf, 0 } },
    { "TopEdgeWithinTwentyFourOfTheLeftIsTheCorner", { 24, 898 }, 0, defaults, Displays::single, Zone { L::topLeft, 0 } },
    { "TopEdgeNearTheRightIsTheCorner", { 1420, 898 }, 0, defaults, Displays::single, Zone { L::topRight, 0 } },
    { "RightEdgeNearTheBottomIsTheCorner", { 1439, 3 }, 0, defaults, Displays::single, Zone { L::bottomRight, 0 } },
    { "BottomEdgeNearTheLeftIsTheCornerEvenWithBottomOff", { 10, 2 }, 0, defaults, Displays::single, Zone { L::bottomLeft, 0 } },
    { "BottomEdgeOffGivesNothing", { 700, 2 }, 0, defaults, Displays::single, std::nullopt },
    { "BottomEdgeHalf", { 700, 5 }, 0, bottomHalf, Displays::single, Zone { L::bottomHalf, 0 } },
    { "BottomEdgeSixPointsAwayDoesNot", { 700, 6 }, 0, bottomHalf, Displays::single, std::nullopt },
    { "BottomEdgeThirds", { 1000, 0 }, 0, bottomThirds, Displays::single, Zone { L::lastThird, 0 } },
    { "CornersOffLeavesTheHalf", { 2, 890 }, 0, noCorners, Displays::single, Zone { L::leftHalf, 0 } },
    { "CornersOffTopCornerMaximizes", { 10, 898 }, 0, noCorners, Displays::single, Zone { L::maximize, 0 } },
    { "SidesOffLeavesNoHalf", { 2, 450 }, 0, noSides, Displays::single, std::nullopt },
    { "SidesOffStillHasCorners", { 2, 890 }, 0, noSides, Displays::single, Zone { L::topLeft, 0 } },
    { "MiddleOfTheScreenIsNoZone", { 700, 450 }, 0, defaults, Displays::single, std::nullopt },
    { "OutsideEveryScreenIsNoZone", { -50, 450 }, 0, defaults, Displays::single, std::nullopt },
    { "FastOnAnEdgeOfItsOwnStillSnaps", { 2, 450 }, 5000, defaults, Displays::single, Zone { L::leftHalf, 0 } },
    { "SlowAtASharedLeftEdgeSnaps", { 2, 450 }, 399, defaults, Displays::withLeftDisplay, Zone { L::leftHalf, 0 } },
    { "FastAtASharedLeftEdgeCarriesOn", { 2, 450 }, 400, defaults, Displays::withLeftDisplay, std::nullopt },
    { "SlowAtTheOtherDisplaysSharedRightEdge", { -4, 450 }, 100, defaults, Displays::withLeftDisplay, Zone { L::rightHalf, 1 } },
    { "FastAtTheOtherDisplaysSharedRightEdge", { -4, 450 }, 1000, defaults, Displays::withLeftDisplay, std::nullopt },
    { "FastAtASharedBottomSkipsTheCorner", { 10, 2 }, 800, defaults, Displays::withDisplayBelow, std::nullopt },
    { "SlowAtASharedBottomTakesTheCorner", { 10, 2 }, 100, defaults, Displays::withDisplayBelow, Zone { L::bottomLeft, 0 } },
    { "FastAtASharedBottomStillTakesTheBottomHalf", { 700, 2 }, 800, bottomHalf, Displays::withDisplayBelow, Zone { L::bottomHalf, 0 } },
};

class SnapZoneTest : public testing::TestWithParam<ZoneRow> { };

TEST_P(SnapZoneTest, FindsTheZone)
{
    const auto& row = GetParam();
    auto screens = displays(row.displays);
    EXPECT_EQ(SnapZones::zone(row.pointer, screens, row.speed, row.config), row.expected);
}

INSTANTIATE_TEST_SUITE_P(Zones, SnapZoneTest, testing::ValuesIn(zoneRows),
    [](const testing::TestParamInfo<ZoneRow>& row) { return std::string(row.param.name); });

TEST(SnapZonesThird, SplitsTheFrameIntoThreeColumnsClampedAtTheEnds)
{
    struct Row {
        double x;
        WindowLayout expected;
    };
    const Rect frame { 100, 0, 1200, 900 };
    const Row rows[] = {
        { 100, L::firstThird }, { 499.9, L::firstThird }, { 500, L::centerThird }, { 899.9, L::centerThird },
        { 900, L::lastThird }, { 1299, L::lastThird }, { -400, L::firstThird }, { 5000, L::lastThird },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.x);
        EXPECT_EQ(SnapZones::third(row.x, frame), row.expected);
    }
}

TEST(SnapZonesSharedEdges, TellsWhichEdgesTouchAnotherDisplay)
{
    using Edges = SnapZones::SharedEdges;
    struct Row {
        const char* name;
        Rect other;
        Edges expected;
    };
    const Row rows[] = {
        { "SameFrameIsPassedOver", mainFrame, {} },
        { "LeftNeighbour", { -1920, 100, 1920, 1080 }, { true, false, false, false } },
        { "RightNeighbourWithinOnePoint", { 1441, -100, 1000, 800 }, { false, true, false, false } },
        { "RightNeighbourTwoPointsAway", { 1442, -100, 1000, 800 }, {} },
        { "RightNeighbourWithoutVerticalOverlap", { 1440, 900, 1000, 800 }, {} },
        { "Above", { 200, 900, 1440, 900 }, { false, false, true, false } },
        { "AboveOnlyAtTheCorner", { 1440, 900, 100, 100 }, {} },
        { "Below", { 200, -1080, 800, 1080 }, { false, false, false, true } },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::vector<Rect> frames { mainFrame, row.other };
        EXPECT_EQ(SnapZones::sharedEdges(mainFrame, frames), row.expected);
    }
}

TEST(PointerSamples, MeasuresSpeedOverTheLastTwentiethOfASecond)
{
    PointerSamples samples;
    EXPECT_EQ(samples.speed(0), 0);
    samples.add(0.00, { 0, 0 });
    samples.add(0.04, { 100, 0 });
    samples.add(0.08, { 200, 0 }); // the first sample is now too old and goes
    EXPECT_NEAR(samples.speed(0.08), 2500, 1e-6);
}

TEST(PointerSamples, ReadsZeroForAStoppedPointerOrTooShortASpan)
{
    PointerSamples samples;
    samples.add(1.00, { 0, 0 });
    samples.add(1.03, { 30, 40 });
    EXPECT_NEAR(samples.speed(1.03), 50 / 0.03, 1e-6);
    EXPECT_NEAR(samples.speed(1.12), 50 / 0.03, 1e-6);
    EXPECT_EQ(samples.speed(1.1301), 0); // the last sample is over 0.1 s old

    PointerSamples brief;
    brief.add(2.00, { 0, 0 });
    brief.add(2.019, { 300, 0 });
    EXPECT_EQ(brief.speed(2.019), 0);
}

} // namespace
} // namespace quillmar
