#include "core/snippets/SnippetMatcher.h"

#include <algorithm>

#include <fmt/format.h>
#include <unicode/uchar.h>

#include "core/base/Utf8.h"
#include "core/snippets/Graphemes.h"

namespace quillmar {

namespace {

char32_t lowered(char32_t codePoint)
{
    return static_cast<char32_t>(u_tolower(static_cast<UChar32>(codePoint)));
}

bool endsWith(std::u32string_view text, std::u32string_view suffix, bool ignoreCase)
{
    if (suffix.size() > text.size())
        return false;
    auto tail = text.substr(text.size() - suffix.size());
    if (!ignoreCase)
        return tail == suffix;
    for (std::size_t index = 0; index < suffix.size(); ++index) {
        if (lowered(tail[index]) != lowered(suffix[index]))
            return false;
    }
    return true;
}

bool startsWord(std::u32string_view text, std::size_t triggerLength)
{
    if (text.size() == triggerLength)
        return true;
    auto before = static_cast<UChar32>(text[text.size() - triggerLength - 1]);
    return u_isUWhiteSpace(before) || u_ispunct(before);
}

bool isLineBreakOrSpace(UChar32 codePoint)
{
    return u_isUWhiteSpace(codePoint) || codePoint == 0x2028 || codePoint == 0x2029 || codePoint == '\n' || codePoint == '\r';
}

} // namespace

std::string message(TriggerProblem problem)
{
    switch (problem) {
    case TriggerProblem::empty:
        return "Type a trigger.";
    case TriggerProblem::tooLong:
        return fmt::format("Keep triggers to {} characters or fewer.", SnippetMatcher::maximumTriggerLength);
    case TriggerProblem::whitespace:
        return "Triggers can't contain spaces or line breaks.";
    case TriggerProblem::duplicate:
        return "Another snippet already uses this trigger.";
    }
    return {};
}

namespace SnippetMatcher {

std::optional<Match> match(std::u32string_view buffer, const std::vector<TextSnippet>& snippets)
{
    bool terminated = !buffer.empty() && buffer.back() == U' ';
    auto beforeSpace = terminated ? buffer.substr(0, buffer.size() - 1) : buffer;
    std::optional<Match> best;
    std::size_t bestLength = 0;
    for (std::size_t index = 0; index < snippets.size(); ++index) {
        const auto& snippet = snippets[index];
        if (snippet.trigger.empty())
            continue;
        auto trigger = decodeUtf8(snippet.trigger);
        if (trigger.empty() || trigger.size() <= bestLength)
            continue;
        std::u32string_view typed;
        if (snippet.expandsImmediately)
            typed = buffer;
        else if (terminated)
            typed = beforeSpace;
        else
            continue;
        if (!endsWith(typed, trigger, snippet.ignoresCase) || !startsWord(typed, trigger.size()))
            continue;
        best = Match { index, !snippet.expandsImmediately };
        bestLength = trigger.size();
    }
    return best;
}

std::optional<Match> match(std::string_view buffer, const std::vector<TextSnippet>& snippets)
{
    return match(std::u32string_view(decodeUtf8(buffer)), snippets);
}

std::optional<TriggerProblem> problem(std::string_view trigger, std::string_view id, const std::vector<TextSnippet>& snippets)
{
    if (trigger.empty())
        return TriggerProblem::empty;
    if (graphemeCount(trigger) > maximumTriggerLength)
        return TriggerProblem::tooLong;
    auto codePoints = decodeUtf8(trigger);
    if (std::any_of(codePoints.begin(), codePoints.end(), [](char32_t codePoint) { return isLineBreakOrSpace(static_cast<UChar32>(codePoint)); }))
        return TriggerProblem::whitespace;
    bool taken = std::any_of(snippets.begin(), snippets.end(),
        [&](const TextSnippet& snippet) { return snippet.id != id && snippet.trigger == trigger; });
    if (taken)
        return TriggerProblem::duplicate;
    return std::nullopt;
}

} // namespace SnippetMatcher

} // namespace quillmar
