#include "core/uninstaller/Removal.h"

#include <algorithm>

#include "core/base/Diagnostics.h"
#include "core/uninstaller/TrashGuard.h"

namespace quillmar {

RemovalOutcome Removal::run(std::vector<RemovalItem> items, const std::filesystem::path& home, Recycler& recycler,
    std::size_t batchSize, const Recycler::Progress& progress, const Recycler::CancelCheck& isCancelled)
{
    RemovalOutcome outcome;
    std::stable_partition(items.begin(), items.end(), [](const RemovalItem& item) { return !item.isApp; });

    std::vector<RemovalItem> safe;
    for (auto& item : items) {
        if (TrashGuard::isSafeToTrash(item.url, home)) {
            bool repeated = std::any_of(safe.begin(), safe.end(),
                [&item](const RemovalItem& earlier) { return earlier.url == item.url; });
            if (!repeated)
                safe.push_back(std::move(item));
        } else {
            outcome.skipped.push_back(std::move(item));
        }
    }

    std::vector<std::filesystem::path> paths;
    paths.reserve(safe.size());
    for (const auto& item : safe)
        paths.push_back(item.url);
    auto recycled = recycler.recycle(paths, batchSize, progress, isCancelled);
    outcome.cancelled = recycled.cancelled;

    auto itemFor = [&safe](const std::filesystem::path& path) {
        return *std::find_if(safe.begin(), safe.end(), [&path](const RemovalItem& item) { return item.url == path; });
    };
    for (const auto& path : recycled.moved)
        outcome.moved.push_back(itemFor(path));
    for (const auto& failure : recycled.failed) {
        diagnostic("uninstaller: could not trash {}: {}", failure.path.string(), failure.message);
        outcome.failed.push_back({ itemFor(failure.path), failure.reason, failure.message });
    }
    for (const auto& path : recycled.notAttempted)
        outcome.notAttempted.push_back(itemFor(path));
    return outcome;
}

} // namespace quillmar
