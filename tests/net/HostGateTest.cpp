#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <optional>
#include <thread>
#include <vector>

#include "core/net/HostGate.h"

namespace quillmar {
namespace {

// Spins (yielding) until `condition` holds; false when it has not within five seconds.
template<typename Condition>
bool eventually(Condition condition)
{
    auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::yield();
    }
    return true;
}

TEST(HostGate, AThirdTransferToTheSameHostWaitsForAPlace)
{
    HostGate gate(2);
    std::optional<HostGate::Pass> first;
    first.emplace(gate, "feeds.example.com:443");
    HostGate::Pass second(gate, "feeds.example.com:443");
    HostGate::Pass elsewhere(gate, "cdn.example.net:443");
    EXPECT_EQ(gate.active("feeds.example.com:443"), 2u);
    EXPECT_EQ(gate.active("cdn.example.net:443"), 1u);

    std::atomic<bool> thirdEntered { false };
    std::thread third([&] {
        HostGate::Pass pass(gate, "feeds.example.com:443");
        thirdEntered = true;
    });
    // No ASSERT while the thread runs: returning with it joinable would abort the whole binary.
    EXPECT_TRUE(eventually([&] { return gate.waiting("feeds.example.com:443") == 1; }));
    EXPECT_FALSE(thirdEntered);
    EXPECT_EQ(gate.waiting("cdn.example.net:443"), 0u);

    first.reset(); // a place comes free either way, so the join below cannot hang
    EXPECT_TRUE(eventually([&] { return thirdEntered.load(); }));
    third.join();
    EXPECT_EQ(gate.active("feeds.example.com:443"), 1u);
    EXPECT_EQ(gate.waiting("feeds.example.com:443"), 0u);
}

TEST(HostGate, ManyThreadsNeverHoldMoreThanTheLimit)
{
    HostGate gate(2);
    std::atomic<int> inside { 0 };
    std::atomic<int> most { 0 };
    std::vector<std::thread> threads;
    for (int index = 0; index < 12; ++index) {
        threads.emplace_back([&] {
            for (int round = 0; round < 50; ++round) {
                HostGate::Pass pass(gate, "feeds.example.com:443");
                int now = ++inside;
                int seen = most.load();
                while (now > seen && !most.compare_exchange_weak(seen, now)) { }
                std::this_thread::yield();
                --inside;
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_LE(most.load(), 2);
    EXPECT_EQ(gate.active("feeds.example.com:443"), 0u);
}

} // namespace
} // namespace quillmar
