#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillmar {

// One line of a log (without its line break) and how many bytes may be read from its start: the
// line-parsers read a little past the end of a line, so `capacity` must be at least
// text.size() + logLinePadding; a shorter one makes them skip the line.
struct LogLine {
    std::string_view text;
    std::size_t capacity = 0;
};

inline constexpr std::size_t logLinePadding = 64;

// The largest token count a log line may state: far above any real turn, and small enough that no sum
// of counts from the logs comes near 64 bits.
inline constexpr std::int64_t maxLoggedTokens = 1'000'000'000'000;

} // namespace quillmar
