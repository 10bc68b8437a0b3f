#include "core/commandbar/CommandMatcher.h"

#include <algorithm>

namespace quillmar {

namespace {

constexpr double impossible = -1'000'000'000;
constexpr double reachableAbove = -500'000'000;

constexpr double matchPoints = 16;
constexpr double titleStartExtra = 8; // a first character matched at position 0
constexpr std::size_t maxLatePenalty = 10;
constexpr double consecutivePoints = 10;
constexpr double gapOpening = 3;
constexpr double gapExtension = 0.6;
constexpr double exactTitleBonus = 40;
constexpr double prefixBonus = 18;
constexpr double wordStartsBonus = 12;
constexpr double lengthPenalty = 0.12;
constexpr std::size_t maxPenalisedLength = 40;

CharacterFolder& threadFolder()
{
    thread_local CharacterFolder folder;
    return folder;
}

} // namespace

void CommandMatcher::Prepared::truncate(std::size_t count)
{
    if (keys.size() > count) {
        keys.resize(count);
        characters.resize(count);
    }
}

CommandMatcher::CommandMatcher() = default;
CommandMatcher::~CommandMatcher() = default;

std::string CommandMatcher::fold(std::string_view character)
{
    return threadFolder().foldedCharacter(character);
}

std::string CommandMatcher::clean(std::string_view text)
{
    std::string cleaned;
    bool pendingSpace = false;
    for (const auto& character : threadFolder().split(text)) {
        if (character.isWhitespace) {
            pendingSpace = !cleaned.empty();
            continue;
        }
        if (pendingSpace)
            cleaned.push_back(' ');
        pendingSpace = false;
        cleaned.append(text.substr(character.begin, character.end - character.begin));
    }
    return cleaned;
}

CommandMatcher::Prepared CommandMatcher::prepare(std::string_view query)
{
    auto split = m_folder.split(query);
    std::vector<CharacterFolder::Character> characters(split.begin(), split.end());
    Prepared prepared;
    for (const auto& character : characters) {
        if (character.isWhitespace)
            continue;
        prepared.keys.push_back(character.key);
        prepared.characters.push_back(m_folder.foldedCharacter(query.substr(character.begin, character.end - character.begin)));
    }
    return prepared;
}

void CommandMatcher::foldTarget(std::string_view text, std::vector<FoldedKey>& keys, std::vector<float>& bonuses)
{
    auto previous = CharacterClass::other;
    bool first = true;
    for (const auto& character : m_folder.split(text)) {
        float bonus = 0;
        if (first)
            bonus = titleStartBonus;
        else if (previous == CharacterClass::wordBreak)
            bonus = wordStartBonus;
        else if (previous == CharacterClass::lowercase && character.characterClass == CharacterClass::uppercase)
            bonus = camelCaseBonus;
        keys.push_back(character.key);
        bonuses.push_back(bonus);
        previous = character.characterClass;
        first = false;
    }
}

std::optional<CommandMatcher::Match> CommandMatcher::match(const Prepared& prepared, std::string_view target)
{
    std::vector<FoldedKey> keys;
    std::vector<float> bonuses;
    foldTarget(target, keys, bonuses);
    auto value = score(prepared.keys, { keys, bonuses });
    if (!value)
        return std::nullopt;
    return Match { *value, std::vector<std::size_t>(m_positions.begin(), m_positions.end()) };
}

std::optional<double> CommandMatcher::score(std::span<const FoldedKey> query, Target target)
{
    const std::size_t n = query.size();
    const std::size_t m = target.keys.size();
    if (n == 0 || n > m)
        return std::nullopt;
    const FoldedKey* keys = target.keys.data();
    const float* bonuses = target.bonuses.data();

    // The earliest and the latest place each query character can take. Any alignment keeps character i
    // within [low, high], so the table is filled there only; a query that is no subsequence stops here.
    m_low.resize(n);
    m_high.resize(n);
    std::size_t column = 0;
    for (std::size_t i = 0; i < n; ++i) {
        while (column < m && keys[column] != query[i])
            ++column;
        if (column == m)
            return std::nullopt;
        m_low[i] = static_cast<std::uint32_t>(column++);
    }
    column = m;
    for (std::size_t i = n; i-- > 0;) {
        --column;
        while (keys[column] != query[i])
            --column;
        m_high[i] = static_cast<std::uint32_t>(column);
    }
    // Scores live in two rows over the whole target (the row above and the one being filled); each row
    // is filled within its band, and the cells the next row reads just outside it are set impossible.
    // Predecessors are kept for every band cell, for backtracking.
    m_rowStart.resize(n);
    std::size_t cellCount = 0;
    for (std::size_t i = 0; i < n; ++i) {
        m_rowStart[i] = cellCount;
        cellCount += m_high[i] - m_low[i] + 1;
    }
    if (m_from.size() < cellCount)
        m_from.resize(cellCount);
    if (m_cells.size() < 2 * m)
        m_cells.resize(2 * m);
    double* above = m_cells.data();
    double* filling = above + m;
    std::int32_t* from = m_from.data();
    const std::uint32_t* low = m_low.data();
    const std::uint32_t* high = m_high.data();

    auto closeRow = [&](double* row, std::size_t i) {
        if (i + 1 == n)
            return;
        if (low[i] > 0)
            row[low[i] - 1] = impossible;
        for (std::size_t j = high[i] + 1; j < high[i + 1]; ++j)
            row[j] = impossible;
    };

    for (std::size_t j = low[0]; j <= high[0]; ++j) {
        double value = impossible;
        if (keys[j] == query[0]) {
            value = matchPoints + bonuses[j] - static_cast<double>(std::min(j, maxLatePenalty));
            if (j == 0)
                value += titleStartExtra;
        }
        above[j] = value;
        from[j - low[0]] = -1;
    }
    closeRow(above, 0);

    for (std::size_t i = 1; i < n; ++i) {
        const FoldedKey wanted = query[i];
        std::int32_t* rowFrom = from + m_rowStart[i];
        // The best earlier cell of the row above, carried along: each step costs 0.6, and the cell two
        // columns back minus 3 (a gap of one) takes over when higher.
        double carried = impossible;
        std::int32_t carriedFrom = -1;
        std::size_t first = std::min<std::size_t>(low[i], low[i - 1] + 2);
        for (std::size_t j = first; j <= high[i]; ++j) {
            // Written as selects rather than branches: whether a gap opens is data, not a pattern.
            double decayed = carried - gapExtension;
            double opened = j >= 2 ? above[j - 2] - gapOpening : impossible;
            // The carried value alone is the loop's critical path; its origin is tracked beside it.
            carriedFrom = opened > decayed ? static_cast<std::int32_t>(j - 2) : carriedFrom;
            carried = std::max(decayed, opened);
            if (j < low[i])
                continue;
            double value = impossible;
            std::int32_t cameFrom = -1;
            if (keys[j] == wanted) {
                double previous = above[j - 1];
                double best = previous > reachableAbove ? previous + consecutivePoints : impossible;
                std::int32_t bestFrom = static_cast<std::int32_t>(j - 1);
                if (carried > best) {
                    best = carried;
                    bestFrom = carriedFrom;
                }
                if (best > reachableAbove) {
                    value = best + matchPoints + bonuses[j];
                    cameFrom = bestFrom;
                }
            }
            filling[j] = value;
            rowFrom[j - low[i]] = cameFrom;
        }
        closeRow(filling, i);
        std::swap(above, filling);
    }

    double raw = impossible;
    std::size_t end = 0;
    for (std::size_t j = low[n - 1]; j <= high[n - 1]; ++j) {
        double value = above[j];
        if (value > reachableAbove && value > raw) {
            raw = value;
            end = j;
        }
    }
    if (raw <= reachableAbove)
        return std::nullopt;

    m_positions.resize(n);
    m_positions[n - 1] = static_cast<std::uint32_t>(end);
    for (std::size_t i = n - 1; i > 0; --i) {
        auto at = m_positions[i];
        m_positions[i - 1] = static_cast<std::uint32_t>(m_from[m_rowStart[i] + at - m_low[i]]);
    }

    bool prefix = true;
    bool wordStarts = true;
    for (std::size_t i = 0; i < n; ++i) {
        prefix = prefix && m_positions[i] == i;
        wordStarts = wordStarts && bonuses[m_positions[i]] >= wordStartBonus;
    }
    if (prefix && m == n)
        raw += exactTitleBonus;
    else if (prefix)
        raw += prefixBonus;
    else if (n > 1 && wordStarts)
        raw += wordStartsBonus;
    raw -= lengthPenalty * static_cast<double>(std::min(m, maxPenalisedLength));
    double normalised = raw / (30.0 * static_cast<double>(n) + 20.0);
    return std::max(normalised, 0.0);
}

} // namespace quillmar
