#include "core/runtime/ParallelFor.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

namespace quillmar {

void parallelFor(std::size_t count, std::size_t threads, const std::function<void(std::size_t index)>& body)
{
    std::atomic<std::size_t> next { 0 };
    auto work = [&] {
        for (auto index = next++; index < count; index = next++)
            body(index);
    };
    auto threadCount = std::clamp<std::size_t>(threads, 1, std::max<std::size_t>(count, 1));
    std::vector<std::thread> helpers;
    for (std::size_t i = 1; i < threadCount; ++i)
        helpers.emplace_back(work);
    work();
    for (auto& helper : helpers)
        helper.join();
}

} // namespace quillmar
