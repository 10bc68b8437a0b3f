#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/base/Result.h"
#include "core/clipboard/ClipItem.h"

namespace quillmar {

// "history.json": the JSON array of ClipItem records, newest first.
namespace ClipHistoryFile {

inline constexpr std::string_view fileName = "history.json";

struct Decoded {
    std::vector<ClipItem> items;
    // Entries that were left out: not a record, a required field missing, a path for an image file, or
    // an id seen before.
    std::size_t dropped = 0;
};

// Outside data: never throws. An Error when the text is not JSON or not an array; otherwise every
// readable entry, in file order.
Result<Decoded> decode(std::string_view text);

std::string encode(const std::vector<ClipItem>& items);

} // namespace ClipHistoryFile

} // namespace quillmar
