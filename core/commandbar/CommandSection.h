#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/commandbar/CommandResult.h"

namespace quillmar {

// One titled group of results in the bar: a source's results, the top hit, the fallbacks, or the
// suggestions listed for an empty query.
struct CommandSection {
    static constexpr std::string_view topHitId = "top";
    static constexpr std::string_view topHitTitle = "Top hit";
    static constexpr std::string_view fallbacksId = "fallbacks";
    static constexpr std::string_view fallbacksTitle = "Fallbacks";
    static constexpr std::string_view suggestionsId = "suggestions";
    static constexpr std::string_view suggestionsTitle = "Suggestions";

    std::string id {}; // a source's raw value, or one of the ids above
    std::string title {};
    std::vector<CommandResult> results {};
};

} // namespace quillmar
