#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "core/answers/CommandTimeZones.h"
#include "core/answers/InlineAnswer.h"
#include "core/commandbar/CommandCandidate.h"

namespace quillmar {

// The command bar's answer step: runs the calculator, the unit converter and the time-zone answerer on
// the query as typed and turns what they answer into candidates of source `answer` for the ranker.
// Holds the time-zone city index, built on first use, so one object should serve every query.
class InlineAnswers final {
public:
    // Every answer, at most one per answerer, in the order calculator, units, time zones. A calculator
    // answer shows its value grouped in `context.locale` and copies it ungrouped in "en_US_POSIX".
    std::vector<InlineAnswer> answers(std::string_view query, const AnswerContext& context) const;

    // The first of `answers`: what the bar shows as its answer.
    std::optional<InlineAnswer> first(std::string_view query, const AnswerContext& context) const;

    // `answers` as ranker candidates: id "answer.<kind>", source `answer`, the answer's title, subtitle
    // and symbol, payload `answer` with the copied text, and no learning (an answer's text changes with
    // every keystroke, so picking one says nothing about the next query).
    std::vector<CommandCandidate> candidates(std::string_view query, const AnswerContext& context) const;

    static CommandCandidate candidate(const InlineAnswer& answer);

private:
    CommandTimeZones m_timeZones;
};

} // namespace quillmar
