#include "core/uninstaller/Removal.h"

#include <algorithm>
#include <span>

#include "core/base/Diagnostics.h"
#include "core/uninstaller/AppRefusal.h"
#include "core/uninstaller/TrashGuard.h"

namespace quillmar {

namespace {

// An application also has to pass its refusals: a protected, nested or own one never goes.
bool mayGo(const RemovalItem& item, const std::filesystem::path& home)
{
    if (!TrashGuard::isSafeToTrash(item.url, home))
        return false;
    if (item.isApp) {
        if (auto refusal = AppRefusal::reason(item.url)) {
            diagnostic("uninstaller: kept {}: {}", item.url.string(), *refusal);
            return false;
        }
    }
    return true;
}

// Hands one batch to the recycler and files each item by what became of its path.
void recycleBatch(std::span<const RemovalItem> batch, Recycler& recycler, RemovalOutcome& outcome)
{
    std::vector<std::filesystem::path> paths;
    paths.reserve(batch.size());
    for (const auto& item : batch)
        paths.push_back(item.url);
    auto recycled = recycler.recycle(paths, paths.size(), {}, {});
    for (const auto& item : batch) {
        auto failure = std::find_if(recycled.failed.begin(), recycled.failed.end(),
            [&item](const RecycleFailure& candidate) { return candidate.path == item.url; });
        if (failure != recycled.failed.end()) {
            diagnostic("uninstaller: could not trash {}: {}", item.url.string(), failure->message);
            outcome.failed.push_back({ item, failure->reason, failure->message });
        } else if (std::find(recycled.moved.begin(), recycled.moved.end(), item.url) != recycled.moved.end()) {
            outcome.moved.push_back(item);
        } else {
            // A recycler that forgets a path has not moved it.
            outcome.failed.push_back({ item, RecycleFailure::Reason::other, "not reported by the recycler" });
        }
    }
}

} // namespace

RemovalOutcome Removal::run(std::vector<RemovalItem> items, const std::filesystem::path& home, Recycler& recycler,
    std::size_t batchSize, const Recycler::Progress& progress, const Recycler::CancelCheck& isCancelled)
{
    RemovalOutcome outcome;
    std::stable_partition(items.begin(), items.end(), [](const RemovalItem& item) { return !item.isApp; });

    std::vector<RemovalItem> chosen;
    for (auto& item : items) {
        bool repeated = std::any_of(chosen.begin(), chosen.end(),
                            [&item](const RemovalItem& earlier) { return earlier.url == item.url; })
            || std::any_of(outcome.skipped.begin(), outcome.skipped.end(),
                [&item](const RemovalItem& earlier) { return earlier.url == item.url; });
        if (repeated)
            outcome.repeated.push_back(std::move(item));
        else if (mayGo(item, home))
            chosen.push_back(std::move(item));
        else
            outcome.skipped.push_back(std::move(item));
    }

    batchSize = std::max<std::size_t>(batchSize, 1);
    for (std::size_t start = 0; start < chosen.size(); start += batchSize) {
        if (start > 0 && isCancelled && isCancelled()) {
            outcome.cancelled = true;
            outcome.notAttempted.assign(chosen.begin() + static_cast<std::ptrdiff_t>(start), chosen.end());
            break;
        }
        auto end = std::min(start + batchSize, chosen.size());
        // Asked again right before the move: a link may have been planted since the list was made.
        std::vector<RemovalItem> batch;
        for (auto index = start; index < end; ++index) {
            if (mayGo(chosen[index], home))
                batch.push_back(chosen[index]);
            else
                outcome.skipped.push_back(chosen[index]);
        }
        recycleBatch(batch, recycler, outcome);
        if (progress)
            progress(static_cast<double>(end) / static_cast<double>(chosen.size()));
    }
    return outcome;
}

} // namespace quillmar
