#pragma once

#include <string>
#include <string_view>

namespace quillmar {

// `text` with case folded and accents removed (UTF-8), for substring search: "Crème" and "CREME" both
// give "creme". Surrounding whitespace is kept; callers trim queries.
std::string foldedForSearch(std::string_view text);

} // namespace quillmar
