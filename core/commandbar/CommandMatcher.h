#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/commandbar/CharacterFolder.h"

namespace quillmar {

// Scores one title against a query: every query character must appear in the title in order (a
// subsequence, compared folded); starts of words, runs of consecutive characters and early matches score
// higher, gaps and long titles lower. Positions and lengths count user-perceived characters. Holds scratch
// buffers, so one matcher serves one thread.
class CommandMatcher final {
public:
    // A query folded character by character with whitespace removed.
    struct Prepared {
        std::vector<std::string> characters; // each folded character as UTF-8
        std::vector<FoldedKey> keys; // the same characters as compared

        std::size_t size() const { return keys.size(); }
        bool empty() const { return keys.empty(); }
        // Keeps the first `count` characters.
        void truncate(std::size_t count);
    };

    struct Match {
        double score = 0; // 0 or more; about 1 for a strong match, above 1 for an exact title
        std::vector<std::size_t> positions; // one per query character, ascending
    };

    // A target folded once for many queries: one key and one boundary bonus per character.
    struct Target {
        std::span<const FoldedKey> keys;
        std::span<const float> bonuses;
    };

    // Boundary bonuses of a target position.
    static constexpr float titleStartBonus = 14;
    static constexpr float wordStartBonus = 11; // after whitespace or a separator
    static constexpr float camelCaseBonus = 5.5f; // an uppercase letter after a lowercase one

    CommandMatcher();
    ~CommandMatcher();
    CommandMatcher(const CommandMatcher&) = delete;
    CommandMatcher& operator=(const CommandMatcher&) = delete;

    // One user-perceived character folded: "\r\n" unchanged, A to Z lowercased, any other character
    // case- and diacritic-insensitively with no locale, keeping the first character of the result
    // ("É" gives "e", "ß" gives "s"). Only the first character of `character` is read.
    static std::string fold(std::string_view character);

    // For showing text on one line: each run of whitespace (line breaks included) becomes one space, and
    // whitespace at both ends goes.
    static std::string clean(std::string_view text);

    Prepared prepare(std::string_view query);

    // None when the prepared query is empty or not a subsequence of the folded target.
    std::optional<Match> match(const Prepared& prepared, std::string_view target);

    // Appends the folded keys and boundary bonuses of `text`, one each per character.
    void foldTarget(std::string_view text, std::vector<FoldedKey>& keys, std::vector<float>& bonuses);

    // A 64-bit summary of which characters occur: a query can match a target only when every bit of the
    // query's summary is set in the target's, so most targets are turned away without reading them.
    static std::uint64_t characterMask(std::span<const FoldedKey> keys)
    {
        std::uint64_t mask = 0;
        for (auto key : keys)
            mask |= std::uint64_t { 1 } << ((key * 0x9E3779B1u) >> 26);
        return mask;
    }

    // The hot path over a target folded in advance: the score, or none as for `match`. The matched
    // positions stay readable through `positions()` until the next call. Allocates only while its
    // scratch grows to the largest target seen.
    std::optional<double> score(std::span<const FoldedKey> query, Target target);
    std::span<const std::uint32_t> positions() const { return m_positions; }

private:
    CharacterFolder m_folder;
    std::vector<double> m_cells; // two rows of scores
    std::vector<std::int32_t> m_from; // the predecessor column of each cell, for backtracking
    std::vector<std::uint32_t> m_low;
    std::vector<std::uint32_t> m_high;
    std::vector<std::size_t> m_rowStart;
    std::vector<std::uint32_t> m_positions;
};

} // namespace quillmar
