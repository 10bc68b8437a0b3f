#include "core/uninstaller/Recycler.h"

#include <algorithm>

namespace quillmar {

RecycleOutcome Recycler::recycle(std::span<const std::filesystem::path> paths, std::size_t batchSize,
    const Progress& progress, const CancelCheck& isCancelled)
{
    RecycleOutcome outcome;
    batchSize = std::max<std::size_t>(batchSize, 1);
    for (std::size_t start = 0; start < paths.size(); start += batchSize) {
        if (start > 0 && isCancelled && isCancelled()) {
            outcome.cancelled = true;
            outcome.notAttempted.assign(paths.begin() + static_cast<std::ptrdiff_t>(start), paths.end());
            break;
        }
        auto batch = paths.subspan(start, std::min(batchSize, paths.size() - start));
        auto failures = recycleBatch(batch);
        for (const auto& path : batch) {
            auto failure = std::find_if(failures.begin(), failures.end(),
                [&path](const RecycleFailure& candidate) { return candidate.path == path; });
            if (failure == failures.end())
                outcome.moved.push_back(path);
            else
                outcome.failed.push_back(*failure);
        }
        if (progress)
            progress(static_cast<double>(start + batch.size()) / static_cast<double>(paths.size()));
    }
    return outcome;
}

} // namespace quillmar
