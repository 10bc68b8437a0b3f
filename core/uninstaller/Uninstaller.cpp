#include "core/uninstaller/Uninstaller.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "core/uninstaller/AppListOrder.h"
#include "core/uninstaller/AppRefusal.h"
#include "core/uninstaller/DiskMeasure.h"
#include "core/uninstaller/InstalledAppList.h"
#include "core/uninstaller/LeftoverSearch.h"
#include "core/uninstaller/ProtectedIdentifiers.h"
#include "core/uninstaller/Removal.h"

namespace quillmar {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view who = "Uninstaller";

using CancelFlag = std::shared_ptr<std::atomic<bool>>;

CancelFlag freshFlag()
{
    return std::make_shared<std::atomic<bool>>(false);
}

void raise(const CancelFlag& flag)
{
    if (flag)
        flag->store(true);
}

std::function<bool()> checker(const CancelFlag& flag)
{
    return [flag] { return flag->load(); };
}

struct MeasuredLeftover {
    fs::path url;
    std::int64_t size;
};

} // namespace

UninstallerPlaces UninstallerPlaces::forHome(const fs::path& home)
{
    return { home, InstalledAppList::defaultRoots(home), home / "Library" };
}

Uninstaller::Uninstaller(Runtime& runtime, UninstallerPlaces places, UninstallerPorts ports)
    : m_runtime(runtime)
    , m_places(std::move(places))
    , m_ports(ports)
    , m_appsQueue(runtime.makeSerialQueue(std::string(appsQueueLabel)))
    , m_searchQueue(runtime.makeSerialQueue(std::string(searchQueueLabel)))
    , m_removalQueue(runtime.makeSerialQueue(std::string(removalQueueLabel)))
{
}

Uninstaller::~Uninstaller()
{
    raise(m_appsCancelled);
    raise(m_searchCancelled);
    raise(m_removalCancelled);
    m_guard.end();
}

void Uninstaller::changed()
{
    if (m_changeCallback)
        m_changeCallback();
}

void Uninstaller::setChangeCallback(std::function<void()> callback)
{
    m_changeCallback = std::move(callback);
}

void Uninstaller::setQuery(std::string query)
{
    m_runtime.mainQueue().assertMainThread(who);
    m_query = std::move(query);
    changed();
}

void Uninstaller::setSort(Sort sort)
{
    m_runtime.mainQueue().assertMainThread(who);
    m_sort = sort;
    changed();
}

std::vector<InstalledApp> Uninstaller::filteredApps() const
{
    return AppListOrder::arrange(m_apps, m_query, m_sort);
}

std::int64_t Uninstaller::totalAppsSize() const
{
    std::int64_t total = 0;
    for (const auto& app : m_apps)
        total += app.size;
    return total;
}

std::int64_t Uninstaller::leftoverSize() const
{
    std::int64_t total = 0;
    for (const auto& leftover : m_leftovers) {
        if (leftover.isSelected)
            total += leftover.size;
    }
    return total;
}

std::vector<Leftover> Uninstaller::exactLeftovers() const
{
    std::vector<Leftover> exact;
    std::copy_if(m_leftovers.begin(), m_leftovers.end(), std::back_inserter(exact),
        [](const Leftover& leftover) { return leftover.isExact; });
    return exact;
}

std::vector<Leftover> Uninstaller::relatedLeftovers() const
{
    std::vector<Leftover> related;
    std::copy_if(m_leftovers.begin(), m_leftovers.end(), std::back_inserter(related),
        [](const Leftover& leftover) { return !leftover.isExact; });
    return related;
}

void Uninstaller::loadApps()
{
    auto& mainQueue = m_runtime.mainQueue();
    mainQueue.assertMainThread(who);
    raise(m_appsCancelled);
    m_appsCancelled = freshFlag();
    auto generation = ++m_appsGeneration;
    m_isLoadingApps = true;
    changed();

    m_appsQueue->post([this, token = m_guard.token(), &mainQueue, generation, roots = m_places.appRoots] {
        auto apps = InstalledAppList::scan(roots);
        token.post(mainQueue, [this, generation, apps = std::move(apps)]() mutable {
            if (generation != m_appsGeneration)
                return;
            std::vector<fs::path> bundles;
            for (const auto& app : apps)
                bundles.push_back(app.url);
            m_apps = std::move(apps);
            m_isLoadingApps = false;
            m_isMeasuringApps = !bundles.empty();
            changed();
            measureApps(generation, std::move(bundles));
        });
    });
}

void Uninstaller::measureApps(std::uint64_t generation, std::vector<fs::path> bundles)
{
    if (bundles.empty())
        return;
    auto& mainQueue = m_runtime.mainQueue();
    auto& usage = m_ports.diskUsage;
    m_appsQueue->post([this, token = m_guard.token(), &mainQueue, &usage, generation, cancelled = m_appsCancelled,
                          bundles] {
        for (std::size_t index = 0; index < bundles.size() && !cancelled->load(); ++index) {
            auto size = DiskMeasure::allocatedSize(usage, bundles[index], checker(cancelled));
            auto lastUsed = DiskMeasure::lastUsed(usage, bundles[index]);
            bool last = index + 1 == bundles.size();
            token.post(mainQueue, [this, generation, url = bundles[index], size, lastUsed, last] {
                if (generation != m_appsGeneration)
                    return;
                for (auto& app : m_apps) {
                    if (app.url == url) {
                        app.size = size;
                        app.lastUsed = lastUsed;
                    }
                }
                if (last)
                    m_isMeasuringApps = false;
                changed();
            });
        }
    });
}

std::optional<InstalledApp> Uninstaller::app(const fs::path& url) const
{
    return InstalledAppList::read(url);
}

std::optional<std::string_view> Uninstaller::refusal(const fs::path& url)
{
    return AppRefusal::reason(url);
}

bool Uninstaller::isProtected(std::string_view identifier)
{
    return ProtectedIdentifiers::isProtected(identifier);
}

void Uninstaller::select(std::optional<InstalledApp> app)
{
    m_runtime.mainQueue().assertMainThread(who);
    cancel();
    m_selectedApp = std::move(app);
    m_identity.reset();
    m_leftovers.clear();
    m_appSize = 0;
    m_lastOutcome.reset();
    m_isScanning = false;
    if (m_selectedApp && !refusal(m_selectedApp->url))
        startSearch(*m_selectedApp);
    changed();
}

void Uninstaller::startSearch(const InstalledApp& app)
{
    auto& mainQueue = m_runtime.mainQueue();
    m_searchCancelled = freshFlag();
    auto generation = ++m_searchGeneration;
    m_isScanning = true;

    auto ports = m_ports;
    m_searchQueue->post([this, token = m_guard.token(), &mainQueue, ports, generation, cancelled = m_searchCancelled,
                            library = m_places.library, app] {
        auto isCancelled = checker(cancelled);
        auto identity = AppIdentity::make(app.url, app.bundleID, ports.signing, isCancelled);
        auto found = LeftoverSearch::find(identity, library, {}, isCancelled);
        if (cancelled->load())
            return;
        std::vector<fs::path> paths;
        for (const auto& leftover : found)
            paths.push_back(leftover.url);
        token.post(mainQueue, [this, generation, identity = std::move(identity), found = std::move(found)]() mutable {
            if (generation != m_searchGeneration)
                return;
            m_identity = std::move(identity);
            m_leftovers = std::move(found);
            m_isScanning = false;
            changed();
        });

        // Sizes afterwards, so that the list shows up before a large cache has been counted.
        auto appSize = DiskMeasure::allocatedSize(ports.diskUsage, app.url, isCancelled);
        std::vector<MeasuredLeftover> sizes;
        for (const auto& path : paths) {
            if (cancelled->load())
                return;
            sizes.push_back({ path, DiskMeasure::allocatedSize(ports.diskUsage, path, isCancelled) });
        }
        token.post(mainQueue, [this, generation, appSize, sizes = std::move(sizes)] {
            if (generation != m_searchGeneration)
                return;
            m_appSize = appSize;
            for (auto& leftover : m_leftovers) {
                auto measured = std::find_if(sizes.begin(), sizes.end(),
                    [&leftover](const MeasuredLeftover& entry) { return entry.url == leftover.url; });
                if (measured != sizes.end())
                    leftover.size = measured->size;
            }
            changed();
        });
    });
}

void Uninstaller::toggle(const Leftover& leftover)
{
    m_runtime.mainQueue().assertMainThread(who);
    for (auto& candidate : m_leftovers) {
        if (candidate.url == leftover.url)
            candidate.isSelected = !candidate.isSelected;
    }
    changed();
}

void Uninstaller::setAll(Match match, Tick tick)
{
    m_runtime.mainQueue().assertMainThread(who);
    for (auto& leftover : m_leftovers) {
        if (leftover.isExact == (match == Match::exact))
            leftover.isSelected = tick == Tick::on;
    }
    changed();
}

void Uninstaller::remove(const InstalledApp& app, bool includingApp, std::function<void(const RemovalOutcome&)> completion)
{
    auto& mainQueue = m_runtime.mainQueue();
    mainQueue.assertMainThread(who);
    if (m_isRemoving || !m_selectedApp || m_selectedApp->url != app.url)
        return;

    std::vector<RemovalItem> items;
    for (const auto& leftover : m_leftovers) {
        if (leftover.isSelected)
            items.push_back({ leftover.url, leftover.url.filename().string(), false });
    }
    if (includingApp)
        items.push_back({ app.url, app.name, true });

    m_isRemoving = true;
    m_removalProgress = 0;
    m_removalCancelled = freshFlag();
    changed();

    auto& recycler = m_ports.recycler;
    m_removalQueue->post([this, token = m_guard.token(), &mainQueue, &recycler, items = std::move(items),
                             home = m_places.home, cancelled = m_removalCancelled, includingApp,
                             completion = std::move(completion)] {
        auto progress = [this, token, &mainQueue](double fraction) {
            token.post(mainQueue, [this, fraction] {
                if (!m_isRemoving)
                    return;
                m_removalProgress = fraction;
                changed();
            });
        };
        auto outcome = Removal::run(items, home, recycler, Removal::defaultBatchSize, progress, checker(cancelled));
        token.post(mainQueue, [this, outcome = std::move(outcome), includingApp, completion] {
            finishRemoval(outcome, includingApp, completion);
        });
    });
}

void Uninstaller::finishRemoval(const RemovalOutcome& outcome, bool includingApp,
    const std::function<void(const RemovalOutcome&)>& completion)
{
    m_isRemoving = false;
    m_removalProgress = 1;
    m_lastOutcome = outcome;

    auto wasMoved = [&outcome](const fs::path& url) {
        return std::any_of(outcome.moved.begin(), outcome.moved.end(),
            [&url](const RemovalItem& item) { return item.url == url; });
    };
    std::erase_if(m_leftovers, [&](const Leftover& leftover) { return wasMoved(leftover.url); });
    for (auto& leftover : m_leftovers) {
        leftover.failure.clear();
        for (const auto& failure : outcome.failed) {
            if (failure.item.url == leftover.url)
                leftover.failure = fmt::format("{}{}", RemovalOutcome::oneFailedPrefix, failure.item.name);
        }
    }
    if (includingApp && m_selectedApp && wasMoved(m_selectedApp->url)) {
        auto url = m_selectedApp->url;
        std::erase_if(m_apps, [&url](const InstalledApp& app) { return app.url == url; });
        if (m_leftovers.empty()) {
            m_selectedApp.reset();
            m_identity.reset();
            m_appSize = 0;
        }
    }
    changed();
    loadApps();
    if (completion)
        completion(outcome);
}

void Uninstaller::reset(std::function<void(const RemovalOutcome&)> completion)
{
    m_runtime.mainQueue().assertMainThread(who);
    if (m_selectedApp)
        remove(*m_selectedApp, /*includingApp=*/false, std::move(completion));
}

void Uninstaller::cancel()
{
    m_runtime.mainQueue().assertMainThread(who);
    raise(m_searchCancelled);
    raise(m_removalCancelled);
    ++m_searchGeneration;
    if (m_isScanning) {
        m_isScanning = false;
        changed();
    }
}

} // namespace quillmar
