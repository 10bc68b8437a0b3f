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
// total therefore counts nothing. A forked session starts by replaying its parent's history, whose lines
// keep the parent's times, earlier than the fork's own first line: those events move the running total
// without counting, since the parent's log counts them. Records come out as the file is read, in order;
// the session is the first session_meta's id, or the file's name.
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
