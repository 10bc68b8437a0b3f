#pragma once

#include <cstddef>
#include <functional>

namespace quillmar {

// Calls `body(index)` once for every index below `count`, on at most `threads` threads (at least one; the
// calling thread is one of them), handing out indices in order as threads become free. Returns when every
// call has returned. For blocking work such as fetches, where a few threads keep the waits overlapping.
void parallelFor(std::size_t count, std::size_t threads, const std::function<void(std::size_t index)>& body);

} // namespace quillmar
