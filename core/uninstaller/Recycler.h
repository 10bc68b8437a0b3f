#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <span>
#include <vector>

#include "core/uninstaller/RecycleOutcome.h"

namespace quillmar {

// Port: moves files and folders to the user's Trash (never deletes them). A backend implements
// `recycleBatch`; `recycle` cuts the work into batches so that progress is reported and a cancel
// request is honoured between them.
class Recycler {
public:
    using Progress = std::function<void(double fraction)>;
    using CancelCheck = std::function<bool()>;

    virtual ~Recycler() = default;

    // Moves `paths` in order, `batchSize` at a time (0 counts as 1). After each batch `progress` (may be
    // empty) gets the fraction of paths handled so far, 0...1; before each batch after the first,
    // `isCancelled` (may be empty) is asked, and when it answers true the rest is left untouched in
    // `notAttempted`. Runs on the calling thread.
    RecycleOutcome recycle(std::span<const std::filesystem::path> paths, std::size_t batchSize,
        const Progress& progress, const CancelCheck& isCancelled);

protected:
    // Moves each of `paths` to the Trash and returns one failure per path that did not move (in any
    // order); paths not named in the result count as moved.
    virtual std::vector<RecycleFailure> recycleBatch(std::span<const std::filesystem::path> paths) = 0;
};

} // namespace quillmar
