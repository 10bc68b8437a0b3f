#include "core/answers/InlineAnswers.h"

#include <string>

#include "core/answers/CommandCalculator.h"
#include "core/answers/CommandUnits.h"
#include "core/base/Text.h"

namespace quillmar {

std::string_view rawValue(InlineAnswerKind kind)
{
    switch (kind) {
    case InlineAnswerKind::calculator:
        return "calculator";
    case InlineAnswerKind::units:
        return "units";
    case InlineAnswerKind::timeZones:
        return "timeZones";
    }
    return "calculator";
}

std::vector<InlineAnswer> InlineAnswers::answers(std::string_view query, const AnswerContext& context) const
{
    std::vector<InlineAnswer> found;
    query = trimmed(query);
    if (query.empty())
        return found;

    if (auto calculation = CommandCalculator::evaluate(query, context.locale)) {
        found.push_back({ InlineAnswerKind::calculator, calculation->text, std::string(query), calculation->copyText,
            "equal.circle" });
    }
    if (auto conversion = CommandUnits::convert(query)) {
        auto text = conversion->text();
        auto subtitle = conversion->from.text() + " in " + std::string(conversion->to.unit.displayName);
        found.push_back({ InlineAnswerKind::units, text, std::move(subtitle), text,
            std::string(symbol(conversion->to.unit.category)) });
    }
    if (auto time = m_timeZones.convert(query, context.now, context.localZone))
        found.push_back({ InlineAnswerKind::timeZones, time->text, time->zone, time->text, "globe" });
    return found;
}

std::optional<InlineAnswer> InlineAnswers::first(std::string_view query, const AnswerContext& context) const
{
    auto all = answers(query, context);
    if (all.empty())
        return std::nullopt;
    return std::move(all.front());
}

std::vector<CommandCandidate> InlineAnswers::candidates(std::string_view query, const AnswerContext& context) const
{
    std::vector<CommandCandidate> result;
    for (const auto& answer : answers(query, context))
        result.push_back(candidate(answer));
    return result;
}

CommandCandidate InlineAnswers::candidate(const InlineAnswer& answer)
{
    CommandCandidate candidate;
    candidate.id = "answer." + std::string(rawValue(answer.kind));
    candidate.source = CommandSource::answer;
    candidate.title = answer.title;
    candidate.subtitle = answer.subtitle;
    candidate.icon = CommandIcon::symbol(answer.symbol);
    candidate.payload = CommandPayload { CommandPayload::Answer { answer.copyText } };
    candidate.kind = std::string(rawValue(answer.kind));
    candidate.learns = false;
    return candidate;
}

} // namespace quillmar
