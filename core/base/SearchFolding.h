#pragma once

#include <string>
#include <string_view>

namespace quillmar {

// Case- and accent-insensitive folding for search, the same in every locale: case folded (fully, so "ß"
// gives "ss"), non-spacing marks removed, and the rest recomposed (NFC), so that a query and a text typed
// in different normal forms fold alike. "Crème" and "CREME" both give "creme".

// `text` (UTF-8) folded for substring search. Surrounding whitespace is kept; callers trim queries.
std::string foldedForSearch(std::string_view text);

// `codePoints` folded the same way; empty when folding leaves nothing (a lone mark) or ICU fails.
std::u32string foldedForSearch(std::u32string_view codePoints);

// For keys that must not depend on how a word was typed: compatibility forms (full-width letters,
// ligatures) replaced, folded as above, lowercased, and every whitespace character taken out. Empty
// when ICU fails.
std::string foldedLoosely(std::string_view text);

} // namespace quillmar
