#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <unicode/uversion.h>

#include "core/commandbar/CommandCandidate.h"

U_NAMESPACE_BEGIN
class Collator;
U_NAMESPACE_END

namespace quillmar {

// Orders titles as the user's locale sorts them, ignoring case (accents still count).
class CommandTitleCollation final {
public:
    CommandTitleCollation();
    ~CommandTitleCollation();
    CommandTitleCollation(const CommandTitleCollation&) = delete;
    CommandTitleCollation& operator=(const CommandTitleCollation&) = delete;

    // For each candidate, the place of its title in that order; equal titles share a place.
    std::vector<std::uint32_t> ranks(const std::vector<CommandCandidate>& candidates);

private:
    std::unique_ptr<icu::Collator> m_collator;
};

} // namespace quillmar
