#include "core/agents/CodexLogReader.h"

#include <algorithm>
#include <optional>

namespace quillmar {

Result<void> CodexLogReader::read(const std::filesystem::path& path, const RecordSink& sink)
{
    std::optional<std::int64_t> sessionStart;
    CodexTokenTotals counted;
    m_record = UsageRecord {};
    m_record.agent = Agent::codex;
    m_record.sessionId = path.stem().string();
    bool namedSession = false;

    return m_lines.read(path, [&](const LogLine& line) {
        if (!m_parser.parse(line, m_entry))
            return;
        switch (m_entry.kind) {
        case CodexEntry::Kind::sessionMeta:
            if (!sessionStart)
                sessionStart = m_entry.timestamp;
            if (!namedSession && !m_entry.text.empty()) {
                m_record.sessionId = m_entry.text;
                namedSession = true;
            }
            return;
        case CodexEntry::Kind::turnContext:
            m_record.model = m_entry.text;
            return;
        case CodexEntry::Kind::tokenCount:
            break;
        }
        if (!sessionStart)
            sessionStart = m_entry.timestamp;
        const auto& totals = m_entry.totals;
        if (totals.total <= counted.total)
            return;
        auto growth = [](std::int64_t now, std::int64_t before) { return std::max<std::int64_t>(now - before, 0); };
        auto input = growth(totals.input, counted.input);
        auto cached = growth(totals.cachedInput, counted.cachedInput);
        auto output = growth(totals.output, counted.output);
        counted = totals;
        if (m_entry.timestamp < *sessionStart)
            return; // the parent's history, replayed by a fork
        m_record.input = std::max<std::int64_t>(input - cached, 0);
        m_record.cacheRead = cached;
        m_record.output = output;
        m_record.timestamp = m_entry.timestamp;
        sink(m_record);
    });
}

} // namespace quillmar
