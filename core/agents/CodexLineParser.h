#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "core/agents/LogLine.h"

namespace quillmar {

// Cumulative token counts of a Codex session as a token_count event states them. `input` includes the
// cached input; `output` includes the reasoning output.
struct CodexTokenTotals {
    std::int64_t input = 0;
    std::int64_t cachedInput = 0;
    std::int64_t output = 0;
    std::int64_t reasoningOutput = 0;
    std::int64_t total = 0;

    bool operator==(const CodexTokenTotals&) const = default;
};

// What one line of a Codex session log ({timestamp, type, payload}) says.
struct CodexEntry {
    enum class Kind {
        sessionMeta, // `text` is the session's id (may be empty); `forked` when it names a parent session
        turnContext, // `text` is the model of the turns that follow
        tokenCount, // `totals` holds the cumulative usage
    };
    Kind kind = Kind::sessionMeta;
    std::int64_t timestamp = 0; // milliseconds since 1970-01-01 UTC
    std::string text;
    bool forked = false; // a session_meta whose payload carries a non-empty forked_from_id
    CodexTokenTotals totals;
};

// Reads the lines of Codex's JSON-lines session logs. Lines of other types, token_count events without
// cumulative totals, counts that are not whole numbers from 0 to 10^12, lines without a time and anything
// that is not JSON count for nothing. One parser per thread.
class CodexLineParser final {
public:
    CodexLineParser();
    ~CodexLineParser();
    CodexLineParser(const CodexLineParser&) = delete;
    CodexLineParser& operator=(const CodexLineParser&) = delete;

    // True when `line` is one of the three kinds; then `entry` holds it. On false it is unspecified.
    bool parse(const LogLine& line, CodexEntry& entry);

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace quillmar
