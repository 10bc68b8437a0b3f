#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/commandbar/CommandCandidate.h"
#include "core/commandbar/CommandMatcher.h"

namespace quillmar {

// The prepared form of one candidate list, made once per list so that each keystroke only compares
// numbers: every title and keyword folded and cut into characters (in one flat buffer), and every id
// numbered so that candidates sharing an id share a group. Refers to the list's strings, so the list must
// outlive the index.
class CommandCandidateIndex final {
public:
    CommandCandidateIndex(const std::vector<CommandCandidate>& candidates, CommandMatcher& matcher);

    std::size_t size() const { return m_titles.size(); }

    CommandMatcher::Target title(std::size_t candidate) const { return target(m_titles[candidate]); }
    std::uint64_t titleMask(std::size_t candidate) const { return m_titles[candidate].mask; }
    // The title's length in user-perceived characters.
    std::uint32_t titleLength(std::size_t candidate) const { return m_titles[candidate].length; }

    std::size_t keywordCount(std::size_t candidate) const
    {
        return m_keywordStart[candidate + 1] - m_keywordStart[candidate];
    }
    CommandMatcher::Target keyword(std::size_t candidate, std::size_t keyword) const
    {
        return target(m_keywords[m_keywordStart[candidate] + keyword]);
    }
    std::uint64_t keywordMask(std::size_t candidate, std::size_t keyword) const
    {
        return m_keywords[m_keywordStart[candidate] + keyword].mask;
    }

    // What ranking reads of every candidate, kept together so that a keystroke never walks the
    // candidates themselves.
    CommandSource source(std::size_t candidate) const { return m_sources[candidate]; }
    bool learns(std::size_t candidate) const { return m_learns[candidate] != 0; }
    double boost(std::size_t candidate) const { return m_boosts[candidate]; }
    const std::optional<WallTime>& date(std::size_t candidate) const { return m_dates[candidate]; }

    // Candidates with equal ids have equal groups, numbered 0 ... groupCount() - 1.
    std::uint32_t group(std::size_t candidate) const { return m_groups[candidate]; }
    std::size_t groupCount() const { return m_groupOfId.size(); }
    std::optional<std::uint32_t> groupOf(std::string_view id) const;

private:
    struct Span {
        std::uint32_t offset;
        std::uint32_t length;
        std::uint64_t mask; // CommandMatcher::characterMask of the characters
    };

    CommandMatcher::Target target(Span span) const
    {
        return { { m_keys.data() + span.offset, span.length }, { m_bonuses.data() + span.offset, span.length } };
    }
    Span append(std::string_view text, CommandMatcher& matcher);

    std::vector<FoldedKey> m_keys;
    std::vector<float> m_bonuses;
    std::vector<Span> m_titles;
    std::vector<std::uint32_t> m_keywordStart; // one more than candidates: candidate i owns [start[i], start[i+1])
    std::vector<Span> m_keywords;
    std::vector<std::uint32_t> m_groups;
    std::vector<CommandSource> m_sources;
    std::vector<std::uint8_t> m_learns;
    std::vector<double> m_boosts;
    std::vector<std::optional<WallTime>> m_dates;
    std::unordered_map<std::string_view, std::uint32_t> m_groupOfId;
};

} // namespace quillmar
