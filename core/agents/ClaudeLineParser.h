#pragma once

#include <memory>
#include <string>

#include "core/agents/LogLine.h"
#include "core/agents/UsageRecord.h"

namespace quillmar {

// What one line of a Claude Code session log says about usage. One response is often logged several
// times while it streams; `messageId` and `requestId` identify it.
struct ClaudeEntry {
    UsageRecord record;
    std::string messageId; // empty when the line has none
    std::string requestId; // empty when the line has none
};

// Reads the lines of Claude Code's JSON-lines session logs. Only assistant lines with a time and a
// usage object count; a synthetic model, a line cut short, a token count that is not a whole number from
// 0 to 10^12, or anything that is not JSON makes the line count for nothing. One parser per thread.
class ClaudeLineParser final {
public:
    ClaudeLineParser();
    ~ClaudeLineParser();
    ClaudeLineParser(const ClaudeLineParser&) = delete;
    ClaudeLineParser& operator=(const ClaudeLineParser&) = delete;

    // True when `line` carries usage; then `entry` holds it (its strings' storage is reused between
    // calls). On false `entry` is unspecified.
    bool parse(const LogLine& line, ClaudeEntry& entry);

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace quillmar
