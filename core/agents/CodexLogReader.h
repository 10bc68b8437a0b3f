#pragma once

#include <filesystem>
#include <string>

#include "core/agents/ClaudeLogReader.h"
#include "core/agents/CodexLineParser.h"
#include "core/agents/LineReader.h"
#include "core/base/Result.h"

namespace quillmar {

// Reads one Codex session log and yields a record each time the session's cumulative total grows: the
// growth is the turn's usage (new input less cached input as input, cached input as cache reads, output
// as output), under the model of the last turn_context. A token_count event re-emitted with an unchanged
// total therefore counts nothing. A forked session's log starts with its own session_meta, whose payload
// names the parent (forked_from_id), then a copy of the parent's session_meta and lines, timestamped at
// the fork's creation, then the fork's own turns, whose totals go on from the parent's. The copy moves the
// running total without counting (the parent's log counts it): token counts at or before the copy's
// instant belong to it, and the first one after ends it. A session_meta after the first starts such a
// copy too, fork marker or not. Records come out as the file is read, in order; the session is the first
// session_meta's id, or the file's name.
class CodexLogReader final {
public:
    Result<void> read(const std::filesystem::path& path, const RecordSink& sink);

    // Bytes of the last file read.
    std::size_t bytesRead() const { return m_lines.bytesRead(); }

private:
    LineReader m_lines;
    CodexLineParser m_parser;
    CodexEntry m_entry;
    UsageRecord m_record;
};

} // namespace quillmar
