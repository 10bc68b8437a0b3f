#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/clipboard/ClipColor.h"
#include "core/clipboard/ClipItem.h"

namespace quillmar {

// What an item's content looks like, for the picker's badges and filter chips.
struct ClipInfo {
    std::optional<ClipColor> color;     // the text is a colour
    bool code = false;                  // the text looks like source code
    std::optional<std::string> domain;  // a link's host, without a leading "www."
    std::size_t lineCount = 0;          // lines of the text; 0 without text
    ClipCategory category = ClipCategory::all; // the one chip the item belongs to besides "all"

    bool operator==(const ClipInfo&) const = default;
};

namespace ClipAnalysis {

ClipInfo analyze(const ClipItem& item);

// A heuristic, tuned to stay quiet on prose: it adds up signs of code (lines ending in ";", "{" or "}";
// a keyword starting a line, two with a statement after it; operators such as "==", "=>" or "::"; a call such as "name("; indented lines
// in multi-line text) and answers yes from three points on, where line endings alone give two.
bool looksLikeCode(std::string_view text);

// Lines of `text`: 0 when empty; a final line break does not start another line.
std::size_t lineCount(std::string_view text);

} // namespace ClipAnalysis

// `items(in:matching:)`: the items of `category` whose text, file paths or source name contain `search`
// (case and accents folded, surrounding whitespace ignored; empty matches everything), in their order.
// `info` gives an item's analysis (the store passes its cache).
std::vector<ClipItem> filterClips(const std::vector<ClipItem>& items, ClipCategory category, std::string_view search,
    const std::function<ClipInfo(const ClipItem&)>& info);

} // namespace quillmar
