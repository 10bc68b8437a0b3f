#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "core/commandbar/CommandCandidate.h"
#include "core/commandbar/CommandLearning.h"
#include "core/commandbar/CommandScope.h"
#include "core/commandbar/CommandSection.h"
#include "core/runtime/Clock.h"

namespace quillmar {

// Turns the candidates of a query into ordered sections: fuzzy matching, source weights, the learning
// book and recency, answers first, a top hit, and fallbacks last. Pure logic over plain values and `now`.
// Keeps the prepared form of the last candidate list, so ranking the same list again (the next keystroke)
// repeats no folding. One ranker serves one thread.
class CommandRanker final {
public:
    struct Input {
        std::string query; // as typed (UTF-8)
        CommandScope scope = CommandScope::all;
        CommandCandidateList candidates; // null reads as empty
        std::vector<CommandCandidate> answers; // inline answers for this query, in the answerers' order
        std::vector<CommandCandidate> fallbacks; // such as a web search for the query
        std::shared_ptr<const CommandLearning> frecency; // a snapshot of the book; null: nothing learned
        WallTime now;
    };

    static constexpr std::size_t maxQueryCharacters = 32;
    static constexpr double shortQueryMinimum = 0.42; // for a prepared query under 3 characters
    static constexpr double queryMinimum = 0.3;
    static constexpr double keywordDiscount = 0.86;
    static constexpr double answerScore = 10.0;
    static constexpr double topHitMinimum = 0.62;
    // Results kept per section after the top hit is taken out; answers and fallbacks are never cut.
    static constexpr std::size_t maxSectionResults = 20;
    // Results listed for an empty query: scope `all` suggests a few, a narrower scope lists its source.
    static constexpr std::size_t maxSuggestions = 40;
    static constexpr std::size_t maxScopeListing = 200;

    CommandRanker();
    ~CommandRanker();
    CommandRanker(const CommandRanker&) = delete;
    CommandRanker& operator=(const CommandRanker&) = delete;

    // The sections in display order. Never fails: an unmatched candidate is simply absent.
    //
    // With a query: the top hit ("top") first when the best result scores at least 0.62, then the source
    // sections by their best score (ties in source order; a section emptied by the top hit is dropped),
    // each cut to `maxSectionResults`, then the fallbacks ("fallbacks", in input order, score 0) in every
    // scope. Answers (scope `all` only) score 10.0 and keep their input order.
    //
    // With an empty query (after trimming): one section of candidates listed without matching, apps first,
    // then by learned weight, then by title in the user's locale ignoring case. Scope `all` suggests apps,
    // settings, actions and scripts plus anything else the user picked before (never emoji), at most
    // `maxSuggestions`, under "suggestions"; a narrower scope lists its source's candidates, at most
    // `maxScopeListing`, under the source's section id.
    std::vector<CommandSection> rank(const Input& input);

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace quillmar
