#pragma once

#include <cstddef>
#include <string_view>

namespace quillmar {

// User-perceived characters (extended grapheme clusters) in UTF-8 text: "é" written as e and a combining
// accent is one, as is a family emoji. What one Delete or Left-arrow press moves over.
std::size_t graphemeCount(std::string_view text);

} // namespace quillmar
