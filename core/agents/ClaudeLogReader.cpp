#include "core/agents/ClaudeLogReader.h"

namespace quillmar {

void ClaudeLogReader::take(const std::filesystem::path& path)
{
    auto& record = m_entry.record;
    if (record.sessionId.empty())
        record.sessionId = path.stem().string();
    if (m_entry.messageId.empty()) {
        m_responses.push_back({ record, std::nullopt });
        return;
    }
    m_identity.assign(m_entry.messageId);
    if (!m_entry.requestId.empty()) {
        m_identity += '\n';
        m_identity += m_entry.requestId;
    }
    auto key = ResponseKey::of(m_identity);
    auto [slot, inserted] = m_indexByKey.try_emplace(key, m_responses.size());
    if (inserted)
        m_responses.push_back({ record, key });
    else
        m_responses[slot->second].record = record;
}

Result<void> ClaudeLogReader::read(const std::filesystem::path& path, const ResponseSink& sink)
{
    m_responses.clear();
    m_indexByKey.clear();
    auto result = m_lines.read(path, [&](const LogLine& line) {
        if (m_parser.parse(line, m_entry))
            take(path);
    });
    // What was read before a failure still counts.
    for (auto& response : m_responses)
        sink(response.record, response.key);
    m_responses.clear();
    m_indexByKey.clear();
    return result;
}

Result<void> ClaudeLogReader::read(const std::filesystem::path& path, const RecordSink& sink)
{
    return read(path, ResponseSink([&](UsageRecord& record, const std::optional<ResponseKey>&) { sink(record); }));
}

} // namespace quillmar
