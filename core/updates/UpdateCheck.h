#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "core/apps/InstalledBundle.h"
#include "core/updates/AppUpdate.h"
#include "core/updates/FeedFetcher.h"
#include "core/updates/UpdateEnvironment.h"

namespace quillmar {

// Checks installed applications for updates. Each application is checked against one source, chosen in
// this order: its own feed, its Electron manifest, the store (for store applications, asked about in
// batches of identifiers). An application whose only feed is refused by the fetch policy, or that has no
// source, is reported as not checkable without any traffic. Fetches run on a few threads of the check's
// own; a failed or unreadable source makes only its applications not checkable.
class UpdateCheck final {
public:
    // Called after each application's row is settled, from a worker thread, never twice at once.
    using Progress = std::function<void(std::size_t done, std::size_t total)>;

    UpdateCheck(FeedFetcher& fetcher, UpdateEnvironment environment);

    // One row per application, in the order of `apps`. Blocks until every source has answered or failed.
    std::vector<AppUpdate> run(const std::vector<InstalledBundle>& apps, const Progress& progress = {}) const;

    // Which source `app` is checked against (none when it has nothing checkable).
    static UpdateSource sourceFor(const InstalledBundle& app);

private:
    FeedFetcher& m_fetcher;
    UpdateEnvironment m_environment;
};

} // namespace quillmar
