#pragma once

#include <filesystem>
#include <vector>

#include "core/uninstaller/RecycleFailure.h"

namespace quillmar {

// What one recycling run did with each path it was given: every path lands in exactly one list.
struct RecycleOutcome {
    std::vector<std::filesystem::path> moved;
    std::vector<RecycleFailure> failed;
    std::vector<std::filesystem::path> notAttempted; // left because the run was cancelled
    bool cancelled = false;
};

} // namespace quillmar
