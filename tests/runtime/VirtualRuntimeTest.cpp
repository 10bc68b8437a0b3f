#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/runtime/VirtualRuntime.h"

namespace quillmar {
namespace {

using namespace std::chrono_literals;

TEST(VirtualRuntime, RunsDueWorkInOrderOfTimeThenPosting)
{
    VirtualRuntime runtime;
    auto serial = runtime.makeSerialQueue("com.quillmar.test");
    std::vector<std::string> order;
    runtime.mainQueue().postAfter(20ms, [&] { order.push_back("main 20"); });
    serial->postAfter(10ms, [&] { order.push_back("serial 10"); });
    runtime.mainQueue().post([&] { order.push_back("main now"); });
    serial->postAfter(20ms, [&] { order.push_back("serial 20"); });

    EXPECT_TRUE(order.empty()) << "nothing runs before the test moves time";
    runtime.advance(15ms);
    EXPECT_EQ(order, (std::vector<std::string> { "main now", "serial 10" }));
    runtime.advance(5ms);
    EXPECT_EQ(order, (std::vector<std::string> { "main now", "serial 10", "main 20", "serial 20" }));
    EXPECT_EQ(runtime.clock().uptime(), 20ms);
}

TEST(VirtualRuntime, TaskSeesTheClockAtItsDueTime)
{
    VirtualRuntime runtime;
    Duration seen {};
    runtime.mainQueue().postAfter(300ms, [&] { seen = runtime.clock().uptime(); });
    runtime.advance(1s);
    EXPECT_EQ(seen, 300ms);
    EXPECT_EQ(runtime.clock().uptime(), 1s);
}

TEST(VirtualRuntime, CancelledWorkNeverRuns)
{
    VirtualRuntime runtime;
    bool ran = false;
    auto item = runtime.mainQueue().postAfter(1s, [&] { ran = true; });
    EXPECT_EQ(runtime.pendingCount(), 1u);
    item->cancel();
    EXPECT_EQ(runtime.pendingCount(), 0u);
    runtime.advance(2s);
    EXPECT_FALSE(ran);
}

TEST(VirtualRuntime, WorkPostedForNowRunsInTheSameIdlePass)
{
    VirtualRuntime runtime;
    int runs = 0;
    runtime.mainQueue().post([&] {
        ++runs;
        runtime.mainQueue().post([&] { ++runs; });
    });
    runtime.runUntilIdle();
    EXPECT_EQ(runs, 2);
}

TEST(VirtualRuntime, SerialWorkIsOffTheMainThread)
{
    VirtualRuntime runtime;
    auto serial = runtime.makeSerialQueue("com.quillmar.test");
    bool mainInSerial = true;
    bool serialCurrent = false;
    serial->post([&] {
        mainInSerial = runtime.mainQueue().isMainThread();
        serialCurrent = serial->isCurrent();
    });
    runtime.runUntilIdle();
    EXPECT_FALSE(mainInSerial);
    EXPECT_TRUE(serialCurrent);
    EXPECT_TRUE(runtime.mainQueue().isMainThread());
    EXPECT_FALSE(serial->isCurrent());
}

TEST(VirtualRuntimeDeathTest, ConfinedWorkOffTheMainThreadStopsTheProcess)
{
    VirtualRuntime runtime;
    auto serial = runtime.makeSerialQueue("com.quillmar.test");
    serial->post([&] { runtime.mainQueue().assertMainThread("test store"); });
    EXPECT_DEATH(runtime.runUntilIdle(), "test store used off the main thread");
}

TEST(VirtualRuntime, SignalWaitRunsDueWorkUntilRaised)
{
    VirtualRuntime runtime;
    auto signal = runtime.makeSignal();
    runtime.mainQueue().postAfter(30ms, [&] { signal->raise(); });
    EXPECT_TRUE(signal->waitFor(60ms));
    EXPECT_EQ(runtime.clock().uptime(), 30ms);
}

TEST(VirtualRuntime, SignalWaitTimesOutAtTheDeadline)
{
    VirtualRuntime runtime;
    auto signal = runtime.makeSignal();
    runtime.mainQueue().postAfter(90ms, [&] { signal->raise(); });
    EXPECT_FALSE(signal->waitFor(60ms));
    EXPECT_EQ(runtime.clock().uptime(), 60ms);
    EXPECT_FALSE(signal->isRaised());
}

TEST(VirtualRuntime, SleepMovesTheClockAndTheWallTime)
{
    VirtualRuntime runtime;
    auto start = runtime.clock().now();
    runtime.clock().sleepFor(2500ms);
    EXPECT_EQ(runtime.clock().uptime(), 2500ms);
    EXPECT_EQ(runtime.clock().now() - start, 2500ms);
}

} // namespace
} // namespace quillmar
