#include <gtest/gtest.h>

#include "core/windows/DragClassifier.h"

namespace quillmar {
namespace {

TEST(DragClassifier, ResizeEdgesFollowTheThreeByThreeGrid)
{
    // A 300 × 300 frame at (100, 100), top-left: each cell is 100 points.
    const Rect frame { 100, 100, 300, 300 };
    struct Row {
        const char* name;
        Point pointer;
        ResizeEdges expected;
    };
    const Row rows[] = {
        { "TopLeftCell", { 150, 150 }, { -1, -1 } },
        { "LeftCell", { 150, 250 }, { -1, 0 } },
        { "BottomLeftCell", { 150, 350 }, { -1, 1 } },
        { "TopRightCell", { 350, 150 }, { 1, -1 } },
        { "RightCell", { 350, 250 }, { 1, 0 } },
        { "BottomRightCell", { 350, 350 }, { 1, 1 } },
        { "TopMiddleCell", { 250, 150 }, { 0, -1 } },
        { "BottomMiddleCell", { 250, 350 }, { 0, 1 } },
        { "CentreNearestTheTop", { 250, 210 }, { 0, -1 } },
        { "CentreNearestTheBottom", { 250, 290 }, { 0, 1 } },
        { "CentreNearestTheLeft", { 210, 250 }, { -1, 0 } },
        { "CentreNearestTheRight", { 290, 250 }, { 1, 0 } },
        { "DeadCentreTakesTheLeft", { 250, 250 }, { -1, 0 } },
        { "ExactlyOneThirdIsTheMiddleColumn", { 200, 250 }, { -1, 0 } },
        { "OutsideToTheLeft", { 50, 250 }, { -1, 0 } },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(DragClassifier::resizeEdges(row.pointer, frame), row.expected);
    }
}

TEST(DragClassifier, DegenerateFramesDoNotDivideByZero)
{
    EXPECT_EQ(DragClassifier::resizeEdges({ 0, 0 }, { 0, 0, 0, 0 }), (ResizeEdges { -1, 0 }));
    EXPECT_EQ(DragClassifier::resizeEdges({ 5, 0 }, { 0, 0, 0, 1 }), (ResizeEdges { 1, 0 }));
}

} // namespace
} // namespace quillmar
