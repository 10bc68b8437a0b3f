#include "core/agents/LineReader.h"

#include <cstring>
#include <fstream>

#include <fmt/format.h>

namespace quillmar {

Result<void> LineReader::read(const std::filesystem::path& path, const LineHandler& handler)
{
    m_bytesRead = 0;
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        return Error { "agents.unreadable", fmt::format("Could not read {}.", path.string()), path.string() };

    std::size_t room = std::max<std::size_t>(m_limits.chunkSize, 1);
    if (m_buffer.size() < room + logLinePadding)
        m_buffer.resize(room + logLinePadding);
    room = m_buffer.size() - logLinePadding;

    auto deliver = [&](std::size_t start, std::size_t length) {
        if (length >= m_limits.maxLineLength)
            return;
        if (length > 0 && m_buffer[start + length - 1] == '\r')
            --length;
        handler(LogLine { std::string_view(m_buffer.data() + start, length), m_buffer.size() - start });
    };

    std::size_t end = 0; // bytes [0, end) hold the start of a line not yet complete
    bool skipping = false; // inside a line longer than the limit, dropped as it arrives
    while (true) {
        if (end == room) {
            if (skipping || end >= m_limits.maxLineLength) {
                skipping = true;
                end = 0;
            } else {
                room *= 2;
                m_buffer.resize(room + logLinePadding);
            }
        }
        stream.read(m_buffer.data() + end, static_cast<std::streamsize>(room - end));
        auto count = static_cast<std::size_t>(stream.gcount());
        if (count == 0) {
            if (stream.bad())
                return Error { "agents.unreadable", fmt::format("Could not read {}.", path.string()), path.string() };
            break;
        }
        m_bytesRead += count;
        std::size_t scanFrom = end;
        end += count;
        std::size_t lineStart = 0;
        while (scanFrom < end) {
            const auto* newline = static_cast<const char*>(std::memchr(m_buffer.data() + scanFrom, '\n', end - scanFrom));
            if (!newline)
                break;
            auto lineEnd = static_cast<std::size_t>(newline - m_buffer.data());
            if (skipping)
                skipping = false;
            else
                deliver(lineStart, lineEnd - lineStart);
            lineStart = lineEnd + 1;
            scanFrom = lineStart;
        }
        if (lineStart > 0) {
            std::memmove(m_buffer.data(), m_buffer.data() + lineStart, end - lineStart);
            end -= lineStart;
        }
    }
    if (end > 0 && !skipping)
        deliver(0, end);
    return {};
}

} // namespace quillmar
