#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/agents/ClaudeLineParser.h"
#include "core/agents/LineReader.h"
#include "core/agents/ResponseKey.h"
#include "core/agents/UsageRecord.h"
#include "core/base/Result.h"

namespace quillmar {

using RecordSink = std::function<void(const UsageRecord& record)>;

// A response as the Claude reader yields it, with its key when it has a message id (none: it cannot be
// matched with other snapshots and counts as it comes). The sink may move the record's contents away.
using ResponseSink = std::function<void(UsageRecord& record, const std::optional<ResponseKey>& key)>;

// Reads one Claude Code session log (a main session's or a sub-agent's) and yields each response once.
// A response logged several times while it streams (the same message.id and requestId, or message.id
// alone when there is no requestId) keeps its last snapshot, the most complete one. Duplicates are
// recognised within the file: the reader holds one small record per response of the file it is reading,
// so memory follows the largest file, not the whole log; each response comes out with its key so that a
// scan can match it across files too (a resumed conversation's log begins with a copy of the earlier
// one's lines). Records come out in the order the responses first appear, once the file is read; a line
// without a sessionId belongs to the file's name.
class ClaudeLogReader final {
public:
    Result<void> read(const std::filesystem::path& path, const ResponseSink& sink);
    Result<void> read(const std::filesystem::path& path, const RecordSink& sink);

    // Bytes of the last file read.
    std::size_t bytesRead() const { return m_lines.bytesRead(); }

private:
    struct Response {
        UsageRecord record;
        std::optional<ResponseKey> key;
    };

    void take(const std::filesystem::path& path);

    LineReader m_lines;
    ClaudeLineParser m_parser;
    ClaudeEntry m_entry;
    std::string m_identity;
    std::vector<Response> m_responses;
    std::unordered_map<ResponseKey, std::size_t, ResponseKeyHash> m_indexByKey;
};

} // namespace quillmar
