#include <gtest/gtest.h>

#include <atomic>
#include <vector>

#include "core/runtime/ParallelFor.h"

namespace quillmar {
namespace {

TEST(ParallelFor, CallsEveryIndexExactlyOnce)
{
    for (std::size_t threads : { 0u, 1u, 4u, 64u }) {
        std::vector<std::atomic<int>> calls(100);
        parallelFor(calls.size(), threads, [&](std::size_t index) { ++calls[index]; });
        for (const auto& count : calls)
            EXPECT_EQ(count.load(), 1) << threads << " threads";
    }
}

TEST(ParallelFor, NothingToDoReturnsAtOnce)
{
    bool called = false;
    parallelFor(0, 4, [&](std::size_t) { called = true; });
    EXPECT_FALSE(called);
}

} // namespace
} // namespace quillmar
