#include <gtest/gtest.h>

#include "core/runtime/VirtualRuntime.h"
#include "core/windows/WindowMover.h"
#include "tests/windows/FakeWindowWorld.h"

namespace quillmar {
namespace {

class WindowMoverTest : public testing::Test {
protected:
    WindowMoverTest() { world.addWindow({ .number = 7, .pid = 70, .frame = { 0, 0, 400, 300 } }); }

    VirtualRuntime runtime;
    FakeWindowWorld world;
    WindowMover mover { runtime, world };
    AXElement window = FakeWindowWorld::windowElement(7);
};

TEST_F(WindowMoverTest, WritesOnlyTheNewestOfTheFramesSubmittedWhileBusy)
{
    mover.submit(window, { 10, 10, 400, 300 }, false);
    mover.submit(window, { 20, 20, 400, 300 }, false);
    mover.submit(window, { 30, 40, 400, 300 }, false);
    EXPECT_TRUE(world.writes.empty()); // nothing is written on the submitting thread
    runtime.runUntilIdle();
    ASSERT_EQ(world.writes.size(), 1u);
    EXPECT_EQ(world.writes[0], (FakeWindowWorld::Write { window, "AXPosition", Point { 30, 40 } }));
}

TEST_F(WindowMoverTest, ResizingWritesTheSizeAfterThePosition)
{
    mover.submit(window, { 5, 6, 500, 200 }, true);
    runtime.runUntilIdle();
    ASSERT_EQ(world.writes.size(), 2u);
    EXPECT_EQ(world.writes[0].name, "AXPosition");
    EXPECT_EQ(world.writes[1].name, "AXSize");
    EXPECT_EQ(world.window(7)->frame, (Rect { 5, 6, 500, 200 }));
}

TEST_F(WindowMoverTest, SchedulesAgainAfterADrain)
{
    mover.submit(window, { 10, 10, 400, 300 }, false);
    runtime.runUntilIdle();
    mover.submit(window, { 50, 10, 400, 300 }, false);
    runtime.runUntilIdle();
    EXPECT_EQ(world.writes.size(), 2u);
    EXPECT_EQ(world.window(7)->frame.x, 50);
}

TEST_F(WindowMoverTest, WhenIdleRunsAfterThePendingFramesOnTheMoverQueue)
{
    std::vector<std::size_t> writesSeen;
    bool onMoverQueue = false;
    mover.submit(window, { 10, 10, 400, 300 }, false);
    mover.whenIdle([&] {
        writesSeen.push_back(world.writes.size());
        onMoverQueue = !runtime.mainQueue().isMainThread();
    });
    runtime.runUntilIdle();
    EXPECT_EQ(writesSeen, (std::vector<std::size_t> { 1 }));
    EXPECT_TRUE(onMoverQueue);
}

} // namespace
} // namespace quillmar
