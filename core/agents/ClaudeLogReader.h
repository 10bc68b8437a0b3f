#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/agents/ClaudeLineParser.h"
#include "core/agents/LineReader.h"
#include "core/agents/UsageRecord.h"
#include "core/base/Result.h"

namespace quillmar {

using RecordSink = std::function<void(const UsageRecord& record)>;

// Reads one Claude Code session log (a main session's or a sub-agent's) and yields each response once.
// A response logged several times while it streams (the same message.id and requestId, or message.id
// alone when there is no requestId) keeps its last snapshot, the most complete one. Duplicates are
// recognised within the file: the reader holds one small record per response of the file it is reading,
// so memory follows the largest file, not the whole log. Records come out in the order the responses
// first appear, once the file is read; a line without a sessionId belongs to the file's name.
class ClaudeLogReader final {
public:
    Result<void> read(const std::filesystem::path& path, const RecordSink& sink);

    // Bytes of the last file read.
    std::size_t bytesRead() const { return m_lines.bytesRead(); }

private:
    void take(const std::filesystem::path& path);

    LineReader m_lines;
    ClaudeLineParser m_parser;
    ClaudeEntry m_entry;
    std::string m_key;
    std::vector<UsageRecord> m_records;
    std::unordered_map<std::string, std::size_t> m_indexByKey;
};

} // namespace quillmar
