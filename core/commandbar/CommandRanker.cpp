#include "core/commandbar/CommandRanker.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include "core/commandbar/CommandCandidateIndex.h"
#include "core/commandbar/CommandMatcher.h"
#include "core/commandbar/CommandTitleCollation.h"
#include "core/commandbar/EpochTime.h"

namespace quillmar {

namespace {

constexpr double frecencyShare = 0.2;
constexpr double dateBonus = 0.08;
constexpr double dateBonusLossPerDay = 0.004;
constexpr double secondsPerDay = 86'400;

// One accepted candidate while ranking. `order` is the place in the candidate list, or in the answers.
struct Hit {
    double score;
    std::uint32_t length; // of the title in characters; 0 for an answer, which keeps its input order
    std::uint32_t order;
    std::uint32_t positionsOffset; // into the ranker's position buffer
    std::uint32_t positionsCount;
    bool isAnswer;
};

bool ranksBefore(const Hit& a, const Hit& b)
{
    if (a.score != b.score)
        return a.score > b.score;
    if (a.length != b.length)
        return a.length < b.length;
    if (a.isAnswer != b.isAnswer)
        return a.isAnswer;
    return a.order < b.order;
}

std::size_t sectionIndex(CommandSource source)
{
    return static_cast<std::size_t>(source);
}

double frecencyBonus(const CommandLearning::Entry& entry, WallTime now)
{
    double age = std::max(secondsBetween(entry.updated, now), 0.0);
    double decayed = entry.weight * std::exp2(-age / CommandLearning::entryHalfLifeSeconds);
    if (!(decayed > 0))
        return 0;
    return frecencyShare * std::min(0.25 * std::log2(decayed + 1), 1.0);
}

double recencyBonus(WallTime date, WallTime now)
{
    // A date ahead of now (a skewed clock) counts as now rather than earning more.
    double days = std::max(secondsBetween(date, now), 0.0) / secondsPerDay;
    return std::max(dateBonus - dateBonusLossPerDay * days, 0.0);
}

} // namespace

struct CommandRanker::State {
    CommandMatcher matcher;

    // The prepared form of the last list, kept while the same list comes back.
    CommandCandidateList indexedList;
    std::unique_ptr<CommandCandidateIndex> index;
    std::vector<std::uint32_t> titleRanks; // for the empty-query listing, made on first need
    CommandTitleCollation collation;

    // The learning entry of each id group, for the last (list, book) pair.
    std::shared_ptr<const CommandLearning> entriesBook;
    std::vector<const CommandLearning::Entry*> entryOfGroup;

    // Scratch reused by every query.
    std::vector<std::uint8_t> claimed;
    std::array<std::vector<Hit>, commandSourceCount> sections;
    std::vector<std::uint32_t> positions;
    std::vector<std::pair<std::uint32_t, double>> habitBonuses; // id group, bonus

    const std::vector<CommandCandidate>& candidates() const { return *indexedList; }

    void prepareList(const CommandCandidateList& list)
    {
        static const CommandCandidateList emptyList = makeCandidateList({});
        const auto& wanted = list ? list : emptyList;
        if (indexedList == wanted && index)
            return;
        indexedList = wanted;
        index = std::make_unique<CommandCandidateIndex>(*wanted, matcher);
        titleRanks.clear();
        entriesBook.reset();
        entryOfGroup.clear();
    }

    void prepareEntries(const std::shared_ptr<const CommandLearning>& book)
    {
        if (book == entriesBook && entryOfGroup.size() == index->groupCount())
            return;
        entriesBook = book;
        entryOfGroup.assign(index->groupCount(), nullptr);
        if (!book)
            return;
        for (const auto& [id, entry] : book->entries) {
            if (auto group = index->groupOf(id))
                entryOfGroup[*group] = &entry;
        }
    }

    std::shared_ptr<const CommandCandidate> shared(std::size_t candidate) const
    {
        return { indexedList, &(*indexedList)[candidate] };
    }

    CommandResult result(const Hit& hit, const Input& input) const
    {
        CommandResult result;
        result.candidate = hit.isAnswer ? std::make_shared<const CommandCandidate>(input.answers[hit.order]) : shared(hit.order);
        result.score = hit.score;
        result.matches.assign(positions.begin() + hit.positionsOffset,
            positions.begin() + hit.positionsOffset + hit.positionsCount);
        return result;
    }

    std::vector<CommandSection> rankQuery(const Input& input, const CommandMatcher::Prepared& prepared);
    std::vector<CommandSection> listWithoutQuery(const Input& input);
};

CommandRanker::CommandRanker()
    : m_state(std::make_unique<State>())
{
}

CommandRanker::~CommandRanker() = default;

std::vector<CommandSection> CommandRanker::rank(const Input& input)
{
    auto& state = *m_state;
    state.prepareList(input.candidates);
    state.prepareEntries(input.frecency);
    // Preparing drops whitespace, so a query of nothing but whitespace prepares empty.
    auto prepared = state.matcher.prepare(input.query);
    prepared.truncate(maxQueryCharacters);
    if (prepared.empty())
        return state.listWithoutQuery(input);
    return state.rankQuery(input, prepared);
}

std::vector<CommandSection> CommandRanker::State::rankQuery(const Input& input, const CommandMatcher::Prepared& prepared)
{
    const std::span<const FoldedKey> query = prepared.keys;
    const double minimum = prepared.size() < 3 ? shortQueryMinimum : queryMinimum;

    habitBonuses.clear();
    if (input.frecency) {
        for (const auto& [id, bonus] : input.frecency->habitBonuses(input.query, input.now)) {
            if (auto group = index->groupOf(id))
                habitBonuses.emplace_back(*group, bonus);
        }
    }
    claimed.assign(index->groupCount(), 0);
    for (auto& section : sections)
        section.clear();
    positions.clear();

    // Which sources take part for this query, and their weights: decided once, not per candidate.
    std::array<double, commandSourceCount> weights {};
    std::array<bool, commandSourceCount> takesPart {};
    for (auto source : allCommandSources()) {
        auto weight = sourceWeight(source);
        bool skipped = !covers(input.scope, source) || !weight
            || (source == CommandSource::emoji && input.scope != CommandScope::emoji)
            || (source == CommandSource::menus && input.scope == CommandScope::all && prepared.size() < 2);
        takesPart[sectionIndex(source)] = !skipped;
        weights[sectionIndex(source)] = weight.value_or(0);
    }

    const std::uint64_t queryMask = CommandMatcher::characterMask(query);
    std::array<std::uint32_t, maxQueryCharacters> titlePositions {};
    for (std::size_t candidateIndex = 0; candidateIndex < index->size(); ++candidateIndex) {
        auto source = sectionIndex(index->source(candidateIndex));
        if (!takesPart[source])
            continue;

        std::optional<double> best;
        if ((index->titleMask(candidateIndex) & queryMask) == queryMask)
            best = matcher.score(query, index->title(candidateIndex));
        std::size_t matchedCount = 0;
        if (best) {
            matchedCount = matcher.positions().size();
            std::copy(matcher.positions().begin(), matcher.positions().end(), titlePositions.begin());
        }
        for (std::size_t keyword = 0; keyword < index->keywordCount(candidateIndex); ++keyword) {
            if ((index->keywordMask(candidateIndex, keyword) & queryMask) != queryMask)
                continue;
            auto score = matcher.score(query, index->keyword(candidateIndex, keyword));
            if (score && (!best || *score * keywordDiscount > *best)) {
                best = *score * keywordDiscount;
                matchedCount = 0; // a keyword match highlights nothing in the title
            }
        }
        if (!best || *best < minimum)
            continue;
        auto group = index->group(candidateIndex);
        if (claimed[group])
            continue;
        claimed[group] = 1;

        double score = weights[source] * *best + index->boost(candidateIndex);
        if (index->learns(candidateIndex)) {
            if (const auto* entry = entryOfGroup[group])
                score += frecencyBonus(*entry, input.now);
            for (const auto& [habitGroup, bonus] : habitBonuses) {
                if (habitGroup == group)
                    score += bonus;
            }
        }
        if (const auto& date = index->date(candidateIndex))
            score += recencyBonus(*date, input.now);

        auto offset = static_cast<std::uint32_t>(positions.size());
        positions.insert(positions.end(), titlePositions.begin(), titlePositions.begin() + static_cast<std::ptrdiff_t>(matchedCount));
        sections[source].push_back({ score, index->titleLength(candidateIndex),
            static_cast<std::uint32_t>(candidateIndex), offset, static_cast<std::uint32_t>(matchedCount), false });
    }

    if (input.scope == CommandScope::all) {
        for (std::size_t answer = 0; answer < input.answers.size(); ++answer) {
            sections[sectionIndex(CommandSource::answer)].push_back(
                { answerScore, 0, static_cast<std::uint32_t>(answer), 0, 0, true });
        }
    }

    // Only the head of a section is shown, so only the head is sorted; the order is total, so the head
    // comes out as a stable sort would leave it.
    std::vector<std::size_t> order;
    for (std::size_t source = 0; source < sections.size(); ++source) {
        auto& hits = sections[source];
        if (hits.empty())
            continue;
        std::size_t head = source == sectionIndex(CommandSource::answer) ? hits.size()
                                                                          : std::min(hits.size(), maxSectionResults + 1);
        std::partial_sort(hits.begin(), hits.begin() + static_cast<std::ptrdiff_t>(head), hits.end(), ranksBefore);
        order.push_back(source);
    }
    std::stable_sort(order.begin(), order.end(),
        [&](std::size_t a, std::size_t b) { return sections[a].front().score > sections[b].front().score; });

    std::vector<CommandSection> ranked;
    std::size_t skipFirst = 0; // the top hit taken out of the first section
    if (!order.empty() && sections[order.front()].front().score >= topHitMinimum) {
        ranked.push_back({ std::string(CommandSection::topHitId), std::string(CommandSection::topHitTitle),
            { result(sections[order.front()].front(), input) } });
        skipFirst = 1;
    }
    for (std::size_t place = 0; place < order.size(); ++place) {
        auto source = order[place];
        const auto& hits = sections[source];
        std::size_t from = place == 0 ? skipFirst : 0;
        if (from >= hits.size())
            continue; // emptied by the top hit
        std::size_t to = source == sectionIndex(CommandSource::answer) ? hits.size()
                                                                        : std::min(hits.size(), from + maxSectionResults);
        CommandSection section { std::string(rawValue(allCommandSources()[source])),
            std::string(sectionTitle(allCommandSources()[source])), {} };
        section.results.reserve(to - from);
        for (std::size_t hit = from; hit < to; ++hit)
            section.results.push_back(result(hits[hit], input));
        ranked.push_back(std::move(section));
    }

    if (!input.fallbacks.empty()) {
        CommandSection section { std::string(CommandSection::fallbacksId), std::string(CommandSection::fallbacksTitle), {} };
        for (const auto& fallback : input.fallbacks)
            section.results.push_back({ std::make_shared<const CommandCandidate>(fallback), 0, {} });
        ranked.push_back(std::move(section));
    }
    return ranked;
}

std::vector<CommandSection> CommandRanker::State::listWithoutQuery(const Input& input)
{
    const auto& list = candidates();
    if (titleRanks.size() != list.size())
        titleRanks = collation.ranks(list);

    struct Listed {
        bool isApp;
        double weight;
        std::uint32_t titleRank;
        std::uint32_t order;
    };
    std::vector<Listed> listed;
    claimed.assign(index->groupCount(), 0);
    for (std::size_t candidateIndex = 0; candidateIndex < list.size(); ++candidateIndex) {
        const auto& candidate = list[candidateIndex];
        if (!covers(input.scope, candidate.source) || candidate.source == CommandSource::web)
            continue;
        if (candidate.source == CommandSource::emoji && input.scope != CommandScope::emoji)
            continue;
        auto group = index->group(candidateIndex);
        double weight = 0;
        if (candidate.learns) {
            if (const auto* entry = entryOfGroup[group]) {
                double age = std::max(secondsBetween(entry->updated, input.now), 0.0);
                weight = entry->weight * std::exp2(-age / CommandLearning::entryHalfLifeSeconds);
            }
        }
        if (input.scope == CommandScope::all) {
            bool suggested = candidate.source == CommandSource::apps || candidate.source == CommandSource::settings
                || candidate.source == CommandSource::actions || candidate.source == CommandSource::scripts;
            if (!suggested && !(weight > 0))
                continue;
        }
        if (claimed[group])
            continue;
        claimed[group] = 1;
        listed.push_back({ candidate.source == CommandSource::apps, weight, titleRanks[candidateIndex],
            static_cast<std::uint32_t>(candidateIndex) });
    }

    std::size_t limit = input.scope == CommandScope::all ? maxSuggestions : maxScopeListing;
    std::size_t head = std::min(listed.size(), limit);
    std::partial_sort(listed.begin(), listed.begin() + static_cast<std::ptrdiff_t>(head), listed.end(),
        [](const Listed& a, const Listed& b) {
            if (a.isApp != b.isApp)
                return a.isApp;
            if (a.weight != b.weight)
                return a.weight > b.weight;
            if (a.titleRank != b.titleRank)
                return a.titleRank < b.titleRank;
            return a.order < b.order;
        });
    if (head == 0)
        return {};

    CommandSection section;
    if (input.scope == CommandScope::all) {
        section.id = CommandSection::suggestionsId;
        section.title = CommandSection::suggestionsTitle;
    } else {
        auto source = sources(input.scope).front();
        section.id = rawValue(source);
        section.title = sectionTitle(source);
    }
    for (std::size_t place = 0; place < head; ++place)
        section.results.push_back({ shared(listed[place].order), listed[place].weight, {} });
    return { std::move(section) };
}

} // namespace quillmar
