#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "core/commandbar/CommandCandidate.h"

namespace quillmar {

// One ranked candidate. `candidate` shares the list it came from, so a result stays valid after the list
// is replaced.
struct CommandResult {
    std::shared_ptr<const CommandCandidate> candidate {};
    double score = 0;
    // Positions in the title, counted in user-perceived characters, of the matched characters (for
    // highlighting), ascending. Empty when the title did not match, for example when a keyword did.
    std::vector<std::size_t> matches {};
};

} // namespace quillmar
