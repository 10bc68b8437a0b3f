#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/runtime/LifetimeGuard.h"
#include "core/runtime/Runtime.h"
#include "core/uninstaller/AppIdentity.h"
#include "core/uninstaller/DiskUsage.h"
#include "core/uninstaller/InstalledApp.h"
#include "core/uninstaller/Leftover.h"
#include "core/uninstaller/Recycler.h"
#include "core/uninstaller/RemovalOutcome.h"
#include "core/uninstaller/SigningInfo.h"
#include "core/uninstaller/UninstallSort.h"

namespace quillmar {

// Where the uninstaller looks. `home` also anchors the trash guard.
struct UninstallerPlaces {
    std::filesystem::path home;
    std::vector<std::filesystem::path> appRoots; // "/Applications" and "<home>/Applications" by default
    std::filesystem::path library; // "<home>/Library" by default

    // The defaults for the user whose home folder is `home`.
    static UninstallerPlaces forHome(const std::filesystem::path& home);
};

// The system services the uninstaller works through; they must outlive it.
struct UninstallerPorts {
    SigningInfo& signing;
    DiskUsage& diskUsage;
    Recycler& recycler;
};

// The uninstaller as the application shows it: the list of applications with their sizes, the chosen
// application's leftovers with their ticks, and the removal. Confined to the main thread: listing,
// measuring, searching and removing run on background queues and publish their results back to the
// main queue; a new selection (or `cancel`) makes the running search's results stale, and they are
// dropped. Every change of observable state calls the change callback.
class Uninstaller final {
public:
    using Identity = AppIdentity;
    using Sort = UninstallSort;

    static constexpr std::string_view emptyStateText = "Apps in /Applications and ~/Applications show up here.";
    static constexpr std::string_view measuringNote = " · measuring…";
    static constexpr std::string_view appsQueueLabel = "com.quillmar.uninstaller.apps";
    static constexpr std::string_view searchQueueLabel = "com.quillmar.uninstaller.search";
    static constexpr std::string_view removalQueueLabel = "com.quillmar.uninstaller.remove";

    Uninstaller(Runtime& runtime, UninstallerPlaces places, UninstallerPorts ports);
    ~Uninstaller();
    Uninstaller(const Uninstaller&) = delete;
    Uninstaller& operator=(const Uninstaller&) = delete;

    // Observable state.
    const std::vector<InstalledApp>& apps() const { return m_apps; }
    bool isLoadingApps() const { return m_isLoadingApps; }
    bool isMeasuringApps() const { return m_isMeasuringApps; }
    const std::optional<InstalledApp>& selectedApp() const { return m_selectedApp; }
    const std::vector<Leftover>& leftovers() const { return m_leftovers; }
    std::int64_t appSize() const { return m_appSize; } // the selected application's bundle, bytes
    bool isScanning() const { return m_isScanning; }
    bool isRemoving() const { return m_isRemoving; }
    double removalProgress() const { return m_removalProgress; } // 0...1 while removing
    const std::string& query() const { return m_query; }
    Sort sort() const { return m_sort; }
    // The last removal's outcome, until the next selection.
    const std::optional<RemovalOutcome>& lastOutcome() const { return m_lastOutcome; }
    // The selected application's identity once its search has begun publishing; none before.
    const std::optional<Identity>& identity() const { return m_identity; }

    void setQuery(std::string query);
    void setSort(Sort sort);

    // Derived state.
    std::vector<InstalledApp> filteredApps() const; // `apps` filtered by `query`, in `sort` order
    std::int64_t totalAppsSize() const; // of all listed apps, bytes
    std::int64_t leftoverSize() const; // of the ticked leftovers, bytes
    std::vector<Leftover> exactLeftovers() const;
    std::vector<Leftover> relatedLeftovers() const;

    // Lists the applications under the roots in the background, then measures each one's size and last
    // use in the background. A second call drops the first one's results.
    void loadApps();

    // The application at `url` (a dropped item), when it is a usable bundle; read on the calling thread.
    std::optional<InstalledApp> app(const std::filesystem::path& url) const;

    // Why the item at `url` may not be removed (see AppRefusal), or none.
    static std::optional<std::string_view> refusal(const std::filesystem::path& url);

    // True for identifiers whose files are never offered (see ProtectedIdentifiers).
    static bool isProtected(std::string_view identifier);

    // Chooses the application whose leftovers are shown (none clears the choice). Cancels the running
    // search, then, for an application that is not refused, measures it and searches the Library in the
    // background; exact leftovers arrive ticked, related ones unticked, and their sizes follow.
    void select(std::optional<InstalledApp> app);

    // Flips the tick of the leftover at the same location as `leftover`.
    void toggle(const Leftover& leftover);

    enum class Match { exact, related };
    enum class Tick { on, off };

    // Ticks or unticks every exact or every related leftover at once.
    void setAll(Match match, Tick tick);

    // Moves the ticked leftovers of the selected application, and the application itself when
    // `includingApp`, to the Trash in the background. Afterwards the moved leftovers leave the list, the
    // failed ones stay with their error, the application list is loaded again, and `completion` (may be
    // empty) gets the outcome on the main queue. A refused application (see `refusal`) is never moved: it
    // lands among the outcome's skipped items. Ignored while a removal runs or when `app` is not the
    // selected application.
    void remove(const InstalledApp& app, bool includingApp, std::function<void(const RemovalOutcome&)> completion);

    // Clears the selected application's data while keeping the application: `remove` of the ticked
    // leftovers only.
    void reset(std::function<void(const RemovalOutcome&)> completion);

    // Stops the running search and a running removal (between batches); their results are dropped.
    void cancel();

    void setChangeCallback(std::function<void()> callback);

private:
    void changed();
    void startSearch(const InstalledApp& app);
    void measureApps(std::uint64_t generation, std::vector<std::filesystem::path> bundles);
    void finishRemoval(const RemovalOutcome& outcome, bool includingApp,
        const std::function<void(const RemovalOutcome&)>& completion);

    Runtime& m_runtime;
    UninstallerPlaces m_places;
    UninstallerPorts m_ports;

    std::vector<InstalledApp> m_apps;
    bool m_isLoadingApps = false;
    bool m_isMeasuringApps = false;
    std::optional<InstalledApp> m_selectedApp;
    std::optional<Identity> m_identity;
    std::vector<Leftover> m_leftovers;
    std::int64_t m_appSize = 0;
    bool m_isScanning = false;
    bool m_isRemoving = false;
    double m_removalProgress = 0;
    std::string m_query;
    Sort m_sort = Sort::name;
    std::optional<RemovalOutcome> m_lastOutcome;
    std::function<void()> m_changeCallback;

    // Each listing and each search carries the generation it started in; results of an older one are stale.
    std::uint64_t m_appsGeneration = 0;
    std::uint64_t m_searchGeneration = 0;
    std::shared_ptr<std::atomic<bool>> m_appsCancelled;
    std::shared_ptr<std::atomic<bool>> m_searchCancelled;
    std::shared_ptr<std::atomic<bool>> m_removalCancelled;
    // Ends with the model (before the queues are joined); results posted after that do nothing.
    LifetimeGuard m_guard;

    // Last, so that they are joined first when the model goes away.
    std::unique_ptr<SerialQueue> m_appsQueue;
    std::unique_ptr<SerialQueue> m_searchQueue;
    std::unique_ptr<SerialQueue> m_removalQueue;
};

} // namespace quillmar
