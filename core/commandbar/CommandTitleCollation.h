#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "core/base/TextCollation.h"
#include "core/commandbar/CommandCandidate.h"

namespace quillmar {

// Orders titles as the user's locale sorts them, ignoring case (accents still count).
class CommandTitleCollation final {
public:
    // For each candidate, the place of its title in that order; equal titles share a place.
    std::vector<std::uint32_t> ranks(const std::vector<CommandCandidate>& candidates);

private:
    TextCollation m_collation;
};

} // namespace quillmar
