#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "core/base/ParseResult.h"

namespace quillmar {

// Checks the object graph of a binary property list ("bplist00") before it is handed to the full
// parser: containers in a binary list refer to other objects by index, so a few hundred bytes can
// describe a tree of astronomical size (each level referring to the next one many times) or a cycle.
// None when the trailer and offset table are sound, the graph from the top object has no cycle, is at
// most `maximumDepth` containers deep, expands to at most `maximumValues` values, and every dictionary
// key is a string without a NUL character; otherwise what is wrong (`tooLarge` for the depth and value
// bounds, `malformed` for the rest).
std::optional<ParseFailure> binaryShapeProblem(std::string_view bytes, std::size_t maximumDepth, std::size_t maximumValues);

} // namespace quillmar
