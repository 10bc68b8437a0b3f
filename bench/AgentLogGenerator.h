#pragma once

#include <cstdint>
#include <filesystem>

namespace quillmar {

// What a generated log set holds, counted as it was written (each response once, each Codex turn once).
struct GeneratedUsage {
    std::int64_t claudeTurns = 0;
    std::int64_t codexTurns = 0;
    std::int64_t input = 0;
    std::int64_t output = 0;
    std::int64_t cacheRead = 0;
    std::int64_t cacheWrite = 0;
    std::int64_t cacheWrite1h = 0;
    double cost = 0; // US dollars
    std::uint64_t bytes = 0; // all bytes written, copies included
    std::uint64_t files = 0;
};

// Whether resumed Claude Code conversations and Codex forks start with the copy of the earlier history
// that the agents write. Left out, the same turns are written without it: the two sets must total alike.
enum class GeneratedCopies { written, leftOut };

// Writes about `targetBytes` (not counting copied histories) of realistic logs of both agents below `home` (".claude/projects/..." and
// ".codex/sessions/YYYY/MM/DD/..."), as a user's home would hold them: about three fifths Claude Code
// sessions with sub-agents, user turns carrying large tool results, responses logged several times while
// they stream and a resumed conversation now and then; the rest Codex sessions with conversation items,
// reasoning, re-emitted token counts and a fork now and then. The same seed writes the same bytes.
GeneratedUsage generateAgentLogs(const std::filesystem::path& home, std::uint64_t targetBytes, std::uint64_t seed,
    GeneratedCopies copies = GeneratedCopies::written);

} // namespace quillmar
