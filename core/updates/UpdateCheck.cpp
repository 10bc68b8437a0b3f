#include "core/updates/UpdateCheck.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <string>

#include "core/appcast/Appcast.h"
#include "core/apps/AppStoreLookup.h"
#include "core/apps/ElectronFeed.h"
#include "core/runtime/ParallelFor.h"
#include "core/versions/AppVersion.h"

namespace quillmar {

namespace {

// One fetch and the rows it settles: one application for a feed or a manifest, a batch for the store.
struct FetchTask {
    UpdateSource source = UpdateSource::none;
    std::string url;
    std::size_t cap = 0;
    std::vector<std::size_t> rows;
};

UpdateProblem problemFor(const FetchFailure& failure)
{
    switch (failure.kind) {
    case FetchFailure::Kind::blocked:
        return UpdateProblem::refused;
    case FetchFailure::Kind::tooLarge:
        return UpdateProblem::tooLarge;
    case FetchFailure::Kind::badResponse:
        return UpdateProblem::malformed;
    case FetchFailure::Kind::http:
    case FetchFailure::Kind::notFound:
    case FetchFailure::Kind::transport:
        break;
    }
    return UpdateProblem::unreachable;
}

UpdateProblem problemFor(const ParseFailure& failure)
{
    switch (failure.problem) {
    case ParseProblem::refused:
        return UpdateProblem::refused;
    case ParseProblem::tooLarge:
        return UpdateProblem::tooLarge;
    case ParseProblem::malformed:
        break;
    }
    return UpdateProblem::malformed;
}

void markNotCheckable(AppUpdate& row, UpdateProblem problem, std::string detail = {})
{
    row.status = UpdateStatus::notCheckable;
    row.problem = problem;
    row.detail = std::move(detail);
}

void markNotCheckable(AppUpdate& row, const ParseFailure& failure)
{
    markNotCheckable(row, problemFor(failure), failure.detail);
}

void markUpToDate(AppUpdate& row)
{
    row.status = UpdateStatus::upToDate;
    row.problem.reset();
}

void settleAppcast(AppUpdate& row, const std::string& body, const UpdateEnvironment& environment)
{
    auto items = Appcast::parse(body);
    if (!items) {
        markNotCheckable(row, items.failure());
        return;
    }
    auto best = Appcast::bestUpdate(
        *items, row.app.build, row.app.shortVersion, environment.system, environment.architecture);
    if (!best) {
        markUpToDate(row);
        return;
    }
    row.status = UpdateStatus::updateAvailable;
    row.problem.reset();
    row.available = best->shortVersion.value_or(best->version.value_or(""));
    if (best->shortVersion && best->version && *best->version != *best->shortVersion)
        *row.available += " (" + *best->version + ")";
    row.releaseNotesURL = best->releaseNotesURL;
    row.notes = best->notesHTML;
    row.pageURL = best->link ? best->link : best->downloadURL;
}

void settleElectron(AppUpdate& row, const std::string& body, const UpdateEnvironment& environment)
{
    auto manifest = ElectronFeed::manifest(body);
    if (!manifest) {
        markNotCheckable(row, UpdateProblem::malformed);
        return;
    }
    if (!ElectronFeed::isOffered(*manifest, environment.kernelRelease)
        || AppVersion::compare(manifest->version, row.app.shortVersion) != std::weak_ordering::greater) {
        markUpToDate(row);
        return;
    }
    row.status = UpdateStatus::updateAvailable;
    row.problem.reset();
    row.available = manifest->version;
    if (row.app.electron && row.app.electron->releasesPage)
        row.pageURL = row.app.electron->releasesPage->text();
}

void settleStoreListing(AppUpdate& row, const StoreListing& listing, const UpdateEnvironment& environment)
{
    if (listing.minimumOS && !listing.minimumOS->empty()
        && AppVersion::compare(*listing.minimumOS, environment.system.text()) == std::weak_ordering::greater) {
        markUpToDate(row); // the newer version needs a newer system than this one
        return;
    }
    if (AppVersion::compare(listing.version, row.app.shortVersion) != std::weak_ordering::greater) {
        markUpToDate(row);
        return;
    }
    row.status = UpdateStatus::updateAvailable;
    row.problem.reset();
    row.available = listing.version;
    row.notes = listing.releaseNotes;
    if (listing.pageURL)
        row.pageURL = listing.pageURL->text();
}

void settleStore(std::vector<AppUpdate>& rows, const FetchTask& task, const std::string& body,
    const UpdateEnvironment& environment)
{
    auto listings = AppStoreLookup::parse(body);
    if (!listings) {
        // An unreadable reply says nothing about whether the store lists these applications.
        for (auto index : task.rows)
            markNotCheckable(rows[index], listings.failure());
        return;
    }
    std::map<std::string, StoreListing, std::less<>> macListings;
    for (auto& listing : *listings) {
        if (listing.isMacListing)
            macListings.emplace(listing.bundleID, std::move(listing));
    }
    for (auto index : task.rows) {
        auto& row = rows[index];
        auto found = macListings.find(row.app.bundleID);
        if (found == macListings.end())
            markNotCheckable(row, UpdateProblem::notListed);
        else
            settleStoreListing(row, found->second, environment);
    }
}

} // namespace

UpdateCheck::UpdateCheck(FeedFetcher& fetcher, UpdateEnvironment environment)
    : m_fetcher(fetcher)
    , m_environment(std::move(environment))
{
}

UpdateSource UpdateCheck::sourceFor(const InstalledBundle& app)
{
    if (app.feedURL)
        return UpdateSource::appcast;
    if (app.electron)
        return UpdateSource::electron;
    if (app.isAppStore)
        return UpdateSource::appStore;
    return UpdateSource::none;
}

std::vector<AppUpdate> UpdateCheck::run(const std::vector<InstalledBundle>& apps, const Progress& progress) const
{
    std::vector<AppUpdate> rows;
    rows.reserve(apps.size());
    std::vector<FetchTask> tasks;
    std::vector<std::size_t> storeRows;
    std::size_t settledWithoutFetch = 0;

    for (std::size_t index = 0; index < apps.size(); ++index) {
        AppUpdate row;
        row.app = apps[index];
        row.source = sourceFor(row.app);
        switch (row.source) {
        case UpdateSource::appcast:
            tasks.push_back({ UpdateSource::appcast, row.app.feedURL->text(), UpdateEnvironment::feedCap, { index } });
            break;
        case UpdateSource::electron:
            tasks.push_back({ UpdateSource::electron, row.app.electron->manifestURL.text(),
                UpdateEnvironment::manifestCap, { index } });
            break;
        case UpdateSource::appStore:
            storeRows.push_back(index);
            break;
        case UpdateSource::none:
            markNotCheckable(row, row.app.hasInsecureFeed ? UpdateProblem::insecureFeed : UpdateProblem::noSource);
            ++settledWithoutFetch;
            break;
        }
        rows.push_back(std::move(row));
    }

    auto batchSize = std::max<std::size_t>(1, m_environment.storeBatchSize);
    for (std::size_t start = 0; start < storeRows.size(); start += batchSize) {
        FetchTask task { UpdateSource::appStore, {}, UpdateEnvironment::storeCap, {} };
        std::vector<std::string> identifiers;
        for (auto i = start; i < std::min(storeRows.size(), start + batchSize); ++i) {
            task.rows.push_back(storeRows[i]);
            identifiers.push_back(apps[storeRows[i]].bundleID);
        }
        task.url = AppStoreLookup::requestURL(identifiers, m_environment.country, m_environment.storeOrigins);
        tasks.push_back(std::move(task));
    }

    std::mutex progressLock;
    std::size_t done = settledWithoutFetch;
    if (progress && done > 0)
        progress(done, apps.size());

    // Each task settles rows no other task touches, so only the progress count is shared.
    parallelFor(tasks.size(), m_environment.parallelFetches, [&](std::size_t taskIndex) {
        const auto& task = tasks[taskIndex];
        auto result = m_fetcher.fetch(task.url, task.cap);
        if (!result) {
            for (auto index : task.rows)
                markNotCheckable(rows[index], problemFor(result.failure()), result.failure().description());
        } else if (task.source == UpdateSource::appcast) {
            settleAppcast(rows[task.rows.front()], result.body(), m_environment);
        } else if (task.source == UpdateSource::electron) {
            settleElectron(rows[task.rows.front()], result.body(), m_environment);
        } else {
            settleStore(rows, task, result.body(), m_environment);
        }
        std::lock_guard guard(progressLock);
        done += task.rows.size();
        if (progress)
            progress(done, apps.size());
    });
    return rows;
}

} // namespace quillmar
