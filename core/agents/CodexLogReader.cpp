#include "core/agents/CodexLogReader.h"

#include <algorithm>
#include <optional>

namespace quillmar {

Result<void> CodexLogReader::read(const std::filesystem::path& path, const RecordSink& sink)
{
    std::optional<std::int64_t> sessionStart;
    // Token counts at or before this instant belong to a copied history: they move the running total
    // without counting.
    std::optional<std::int64_t> copiedUntil;
    CodexTokenTotals counted;
    m_record = UsageRecord {};
    m_record.agent = Agent::codex;
    m_record.sessionId = path.stem().string();

    return m_lines.read(path, [&](const LogLine& line) {
        if (!m_parser.parse(line, m_entry))
            return;
        switch (m_entry.kind) {
        case CodexEntry::Kind::sessionMeta:
            if (!sessionStart) {
                sessionStart = m_entry.timestamp;
                if (!m_entry.text.empty())
                    m_record.sessionId = m_entry.text;
                if (m_entry.forked)
                    copiedUntil = m_entry.timestamp;
            } else {
                // Another session's meta: the start of a copied history. A fork's copy carries the fork's
                // creation instant; an older copy kept the parent's own, earlier times.
                copiedUntil = std::max({ copiedUntil.value_or(m_entry.timestamp), m_entry.timestamp, *sessionStart });
            }
            return;
        case CodexEntry::Kind::turnContext:
            m_record.model = m_entry.text;
            return;
        case CodexEntry::Kind::tokenCount:
            break;
        }
        bool copied = copiedUntil && m_entry.timestamp <= *copiedUntil;
        if (!copied)
            copiedUntil.reset(); // the session's own turns have begun
        const auto& totals = m_entry.totals;
        if (totals.total <= counted.total)
            return;
        auto growth = [](std::int64_t now, std::int64_t before) { return std::max<std::int64_t>(now - before, 0); };
        auto input = growth(totals.input, counted.input);
        auto cached = growth(totals.cachedInput, counted.cachedInput);
        auto output = growth(totals.output, counted.output);
        counted = totals;
        if (copied)
            return; // counted where it happened, in the parent's own log
        m_record.input = std::max<std::int64_t>(input - cached, 0);
        m_record.cacheRead = cached;
        m_record.output = output;
        m_record.timestamp = m_entry.timestamp;
        sink(m_record);
    });
}

} // namespace quillmar
