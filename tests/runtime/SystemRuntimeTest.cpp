#include <gtest/gtest.h>

#include <atomic>

#include "core/runtime/SystemRuntime.h"

namespace quillmar {
namespace {

using namespace std::chrono_literals;

// The real queues, checked for order and thread, never for timing: waits have generous deadlines.
TEST(SystemRuntime, SerialQueueRunsInOrderOffTheMainThread)
{
    SystemRuntime runtime;
    auto serial = runtime.makeSerialQueue("com.quillmar.test");
    auto done = runtime.makeSignal();
    std::vector<int> order;
    std::atomic<bool> sawMain { true };
    for (int i = 0; i < 5; ++i)
        serial->post([&, i] { order.push_back(i); });
    serial->post([&] {
        sawMain = runtime.mainQueue().isMainThread();
        done->raise();
    });
    ASSERT_TRUE(done->waitFor(10s));
    EXPECT_EQ(order, (std::vector<int> { 0, 1, 2, 3, 4 }));
    EXPECT_FALSE(sawMain);
}

TEST(SystemRuntime, EventLoopRunsWorkPostedFromAnotherThreadUntilStopped)
{
    SystemRuntime runtime;
    auto serial = runtime.makeSerialQueue("com.quillmar.test");
    bool ranOnMain = false;
    auto cancelled = runtime.mainQueue().postAfter(1ms, [] { FAIL() << "cancelled work ran"; });
    cancelled->cancel();
    serial->post([&] {
        runtime.mainQueue().post([&] {
            ranOnMain = runtime.mainQueue().isMainThread();
            runtime.eventLoop().stop();
        });
    });
    runtime.eventLoop().run();
    EXPECT_TRUE(ranOnMain);
}

} // namespace
} // namespace quillmar
