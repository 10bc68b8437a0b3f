#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>

#include "core/agents/LogLine.h"
#include "core/base/Result.h"

namespace quillmar {

// Reads a JSON-lines file in large chunks and hands each line to a callback, in order, with the padding
// the line-parsers need. Memory is one chunk plus the longest line; a line of `maxLineLength` bytes or more
// is skipped whole. A trailing carriage return is dropped; a last line without a line break is read.
class LineReader final {
public:
    struct Limits {
        std::size_t chunkSize = std::size_t(1) << 22; // bytes read at once
        std::size_t maxLineLength = std::size_t(1) << 28;
    };

    using LineHandler = std::function<void(const LogLine& line)>;

    LineReader() = default;
    explicit LineReader(Limits limits) : m_limits(limits) { }

    // Reads all of `path`; an Error when it cannot be opened or read. The buffer is kept for the next file.
    Result<void> read(const std::filesystem::path& path, const LineHandler& handler);

    // Bytes handed over or skipped in the last read.
    std::size_t bytesRead() const { return m_bytesRead; }

private:
    Limits m_limits;
    std::string m_buffer;
    std::size_t m_bytesRead = 0;
};

} // namespace quillmar
