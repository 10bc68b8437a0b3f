#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/snippets/TextSnippet.h"

namespace quillmar {

// Why the editor refuses a trigger.
enum class TriggerProblem { empty, tooLong, whitespace, duplicate };

// The sentence the editor shows for `problem`.
std::string message(TriggerProblem problem);

namespace SnippetMatcher {

// Triggers are at most this many characters (grapheme clusters).
inline constexpr std::size_t maximumTriggerLength = 40;

inline constexpr std::string_view symbolAdvice
    = "Start triggers with a symbol, like ;sig or //addr, so they never fire in ordinary words.";

struct Match {
    std::size_t index;      // into the snippets given
    bool terminatedBySpace; // the buffer ended with the space that fired it, which is erased too
};

// The snippet that the typed `buffer` (code points, oldest first) fires, or none. A buffer ending in a space
// was terminated: the space is set aside. A snippet that expands immediately fires when the buffer as typed
// ends with its trigger; any other fires only when the buffer was terminated and what precedes the space
// ends with its trigger. Triggers that ignore case compare code point by code point in lower case. The
// trigger must start a word: the character before it, if any, is whitespace or punctuation. Of several, the
// longest trigger wins, then the first in the list. Empty triggers never fire.
std::optional<Match> match(std::u32string_view buffer, const std::vector<TextSnippet>& snippets);
std::optional<Match> match(std::string_view buffer, const std::vector<TextSnippet>& snippets);

// The problem with `trigger` for the snippet `id` among `snippets`, checked in the order of the enum; none
// when the trigger can be used. Another snippet with exactly the same trigger is a duplicate.
std::optional<TriggerProblem> problem(std::string_view trigger, std::string_view id, const std::vector<TextSnippet>& snippets);

} // namespace SnippetMatcher

} // namespace quillmar
