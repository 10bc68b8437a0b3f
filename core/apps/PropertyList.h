#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "core/apps/PropertyValue.h"
#include "core/base/ParseResult.h"

namespace quillmar {

// Bounds that keep a hostile property list from exhausting memory or the stack. Real application
// property lists are a few kilobytes, a few levels deep and a few hundred values large.
struct PropertyListLimits {
    std::size_t maximumBytes = 16 * 1024 * 1024;
    std::size_t maximumDepth = 64;        // nesting of arrays and dictionaries; the root is level 1
    std::size_t maximumValues = 1000000;  // values of the tree once shared references are expanded
};

// Reads an XML or binary property list (the format is told by its first bytes). Fails `tooLarge` when the
// bytes exceed `limits`, and `malformed` when they are empty or not a well-formed property list.
ParseResult<PropertyValue> parsePropertyList(std::string_view bytes, const PropertyListLimits& limits = {});

} // namespace quillmar
