#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillmar {

// What identifies one Claude Code response across snapshots and files (its message.id and requestId),
// kept as a 128-bit hash so that a scan holds sixteen bytes per response rather than its strings. Two
// different responses share a key with odds far below one in 10^20 even over millions of responses.
struct ResponseKey {
    std::uint64_t high = 0;
    std::uint64_t low = 0;

    // The key of `identity`, the response's ids as the reader joins them.
    static ResponseKey of(std::string_view identity);

    bool operator==(const ResponseKey&) const = default;
};

struct ResponseKeyHash {
    std::size_t operator()(const ResponseKey& key) const { return static_cast<std::size_t>(key.low); }
};

} // namespace quillmar
