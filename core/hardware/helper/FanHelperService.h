#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "core/hardware/fans/FanControlEngine.h"
#include "core/hardware/helper/FanHelperFiles.h"
#include "core/hardware/helper/FanHelperLock.h"
#include "core/hardware/helper/FanHelperTransport.h"
#include "core/runtime/Runtime.h"

namespace quillmar {

// The privileged fan helper's rules. One process (the lock file), one controlling session at a time, and
// never manual fans without a live controller: when the controller says "restore", goes away, or its
// heartbeats stop for `heartbeatTimeout`, the fans go back to automatic, and a marker file written while
// they may be manual makes a helper that crashed restore them at its next start. Confined to the main queue;
// the engine's waits block it, which is fine in a process that does nothing else.
class FanHelperService final {
public:
    using SessionID = FanHelperTransport::SessionID;

    struct Configuration {
        std::filesystem::path lockFile = "/var/run/com.quillmar.fanhelper.lock";
        std::filesystem::path markerFile = "/var/run/com.quillmar.fanhelper.active";
        // Who must own the lock file: root.
        std::uint32_t lockOwner = 0;
        std::string appIdentifier = "com.quillmar.app";
        std::string teamIdentifier;
    };

    enum class ExitReason { alreadyRunning, lockRefused, cannotListen, idle };

    static constexpr std::string_view serviceName = "com.quillmar.app.fanhelper";
    static constexpr std::string_view anotherSessionMessage = "Another session is controlling the fans";
    static constexpr std::string_view restorePendingMessage = "Finishing a restore first";
    static constexpr std::string_view restoreRetryMessage = "The fans didn't go back to automatic yet. Retrying.";
    static constexpr std::string_view markerUnwritableMessage =
        "The fans stay automatic because the helper can't save its safety marker.";

    // Five missed heartbeats (the app sends one a second): long enough for a busy app, short for a hung one.
    static constexpr Duration heartbeatTimeout = seconds(5.0);
    static constexpr Duration restoreRetryInterval = seconds(1.0);
    static constexpr Duration idleExitDelay = seconds(30.0);

    FanHelperService(Runtime& runtime, FanControlEngine& engine, FanHelperFiles& files, FanHelperTransport& transport,
        Configuration configuration, std::function<void(ExitReason)> exit);
    // Terminates: the fans never stay manual after the helper is gone.
    ~FanHelperService();

    FanHelperService(const FanHelperService&) = delete;
    FanHelperService& operator=(const FanHelperService&) = delete;

    // Takes the lock (exits when another helper holds it), restores automatic when a crash left the marker,
    // and starts listening.
    void start();

    // The helper is being ended (launchd's SIGTERM, or the process going down): stops listening and, when the
    // fans may be manual because of it, puts them back to automatic at once. A restore that does not take
    // leaves the marker, so that the next start recovers. Nothing is scheduled afterwards. Also run by the
    // destructor.
    void terminate();

    // The requirement a client's code signature must meet: the app's identifier, signed by the helper's team.
    static std::string codeRequirement(std::string_view appIdentifier, std::string_view teamIdentifier);

    std::optional<SessionID> controller() const { return m_controller; }
    std::optional<int> level() const { return m_level; }
    bool restorePending() const { return m_restorePending; }

private:
    void opened(SessionID session);
    void closed(SessionID session);
    void request(SessionID session, const FanHelperRequest& request, const FanHelperTransport::Reply& reply);
    FanHelperResponse apply(SessionID session, int level);
    FanHelperResponse heartbeat(SessionID session);
    FanHelperResponse restore(SessionID session);
    FanHelperResponse response(SessionID session, std::string_view message) const;

    // Back to automatic; on failure the restore stays pending and is retried. True when it took.
    bool restoreNow(std::string_view why);
    void releaseController();
    void watchHeartbeats();
    void scheduleIdleExitIfIdle();
    void cancel(WorkItemHandle& item);
    void assertMain() const;

    Runtime& m_runtime;
    FanControlEngine& m_engine;
    FanHelperFiles& m_files;
    FanHelperTransport& m_transport;
    Configuration m_configuration;
    std::function<void(ExitReason)> m_exit;

    std::optional<FanHelperLock> m_lock;
    std::set<SessionID> m_sessions;
    std::optional<SessionID> m_controller;
    std::optional<int> m_level;
    bool m_restorePending = false;
    bool m_exited = false;
    bool m_terminated = false;
    WorkItemHandle m_heartbeatDeadline;
    WorkItemHandle m_restoreRetry;
    WorkItemHandle m_idleExit;
};

} // namespace quillmar
