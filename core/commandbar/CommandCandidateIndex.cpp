#include "core/commandbar/CommandCandidateIndex.h"

namespace quillmar {

CommandCandidateIndex::CommandCandidateIndex(const std::vector<CommandCandidate>& candidates, CommandMatcher& matcher)
{
    m_titles.reserve(candidates.size());
    m_keywordStart.reserve(candidates.size() + 1);
    m_groups.reserve(candidates.size());
    m_groupOfId.reserve(candidates.size());
    m_sources.reserve(candidates.size());
    m_learns.reserve(candidates.size());
    m_boosts.reserve(candidates.size());
    m_dates.reserve(candidates.size());
    for (const auto& candidate : candidates) {
        m_titles.push_back(append(candidate.title, matcher));
        m_keywordStart.push_back(static_cast<std::uint32_t>(m_keywords.size()));
        for (const auto& keyword : candidate.keywords)
            m_keywords.push_back(append(keyword, matcher));
        auto [found, inserted] = m_groupOfId.try_emplace(candidate.id, static_cast<std::uint32_t>(m_groupOfId.size()));
        m_groups.push_back(found->second);
        m_sources.push_back(candidate.source);
        m_learns.push_back(candidate.learns ? 1 : 0);
        m_boosts.push_back(candidate.boost);
        m_dates.push_back(candidate.date);
    }
    m_keywordStart.push_back(static_cast<std::uint32_t>(m_keywords.size()));
}

std::optional<std::uint32_t> CommandCandidateIndex::groupOf(std::string_view id) const
{
    auto found = m_groupOfId.find(id);
    if (found == m_groupOfId.end())
        return std::nullopt;
    return found->second;
}

CommandCandidateIndex::Span CommandCandidateIndex::append(std::string_view text, CommandMatcher& matcher)
{
    auto offset = static_cast<std::uint32_t>(m_keys.size());
    matcher.foldTarget(text, m_keys, m_bonuses);
    auto length = static_cast<std::uint32_t>(m_keys.size()) - offset;
    return { offset, length, CommandMatcher::characterMask({ m_keys.data() + offset, length }) };
}

} // namespace quillmar
