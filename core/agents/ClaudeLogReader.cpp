#include "core/agents/ClaudeLogReader.h"

namespace quillmar {

void ClaudeLogReader::take(const std::filesystem::path& path)
{
    auto& record = m_entry.record;
    if (record.sessionId.empty())
        record.sessionId = path.stem().string();
    if (m_entry.messageId.empty()) {
        m_records.push_back(record);
        return;
    }
    m_key.assign(m_entry.messageId);
    if (!m_entry.requestId.empty()) {
        m_key += '\n';
        m_key += m_entry.requestId;
    }
    auto [slot, inserted] = m_indexByKey.try_emplace(m_key, m_records.size());
    if (inserted)
        m_records.push_back(record);
    else
        m_records[slot->second] = record;
}

Result<void> ClaudeLogReader::read(const std::filesystem::path& path, const RecordSink& sink)
{
    m_records.clear();
    m_indexByKey.clear();
    auto result = m_lines.read(path, [&](const LogLine& line) {
        if (m_parser.parse(line, m_entry))
            take(path);
    });
    // What was read before a failure still counts.
    for (const auto& record : m_records)
        sink(record);
    m_records.clear();
    m_indexByKey.clear();
    return result;
}

} // namespace quillmar
