#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "core/runtime/Clock.h"

namespace quillmar {

namespace SnippetVariables {

inline constexpr std::string_view help = "Use {date:pattern} with any date pattern, such as {date:d MMMM yyyy} or "
                                         "{time:HH:mm}. {cursor} leaves the cursor at that spot.";

// A snippet's text with its variables filled in, and where the caret ends: `cursor` counts grapheme
// clusters from the start (the end when the text has no cursor mark).
struct Expansion {
    std::string text;
    std::size_t cursor = 0;

    bool operator==(const Expansion&) const = default;
};

// Fills in the variables of `text`: a name in braces, optionally with ":" and an argument inside them.
// - "{date}", "{time}", "{datetime}": now in `locale` and `timeZone`, in the locale's medium date, short
//   time, and medium date with short time; with an argument, formatted with that Unicode date pattern
//   ("{date:yyyy-MM-dd}", "{time:HH:mm}"). "{datetime:…}" takes a pattern too.
// - "{weekday}": the day's full name ("Monday").
// - "{clipboard}": `clipboard`, or nothing without one. Inserted as it is, never expanded itself.
// - "{cursor}": removed; the first one marks where the caret ends.
// Anything else in braces (an unknown name, an argument where none is taken, a pattern the date formatter
// refuses, an unclosed brace) stays as written. `locale` is an identifier such as "en_US" or "de-DE"
// (empty: the system's); `timeZone` an IANA name such as "Europe/Paris" (empty: the system's).
Expansion expand(std::string_view text, WallTime now, std::string_view locale, std::string_view timeZone,
    const std::optional<std::string>& clipboard);

// True for a time zone name the formatter knows ("Europe/Paris", "UTC", "GMT+2").
bool isKnownTimeZone(std::string_view timeZone);

} // namespace SnippetVariables

} // namespace quillmar
