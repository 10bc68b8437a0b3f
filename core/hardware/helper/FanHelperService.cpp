#include "core/hardware/helper/FanHelperService.h"

#include <fmt/format.h>

#include "core/base/Diagnostics.h"

namespace quillmar {

namespace {

constexpr std::string_view who = "FanHelperService";

} // namespace

FanHelperService::FanHelperService(Runtime& runtime, FanControlEngine& engine, FanHelperFiles& files,
    FanHelperTransport& transport, Configuration configuration, std::function<void(ExitReason)> exit)
    : m_runtime(runtime)
    , m_engine(engine)
    , m_files(files)
    , m_transport(transport)
    , m_configuration(std::move(configuration))
    , m_exit(std::move(exit))
{
    assertMain();
}

FanHelperService::~FanHelperService()
{
    terminate();
}

void FanHelperService::terminate()
{
    if (m_terminated)
        return;
    m_terminated = true;
    m_exited = true;
    cancel(m_heartbeatDeadline);
    cancel(m_restoreRetry);
    cancel(m_idleExit);
    m_transport.stop();
    bool mayBeManual = m_controller || m_restorePending || m_engine.holdsManual();
    m_controller.reset();
    m_level.reset();
    if (!mayBeManual)
        return;
    if (!m_engine.restoreAutomatic(FanControlEngine::restoreAttempts)) {
        diagnostic("fan helper: restore at the end did not take; the marker stays for the next start");
        return;
    }
    m_restorePending = false;
    if (auto removed = m_files.removeMarker(m_configuration.markerFile); !removed)
        diagnostic("fan helper: cannot remove marker: {}", removed.error().message);
}

std::string FanHelperService::codeRequirement(std::string_view appIdentifier, std::string_view teamIdentifier)
{
    return fmt::format("anchor apple generic and identifier \"{}\" and certificate leaf[subject.OU] = \"{}\"",
        appIdentifier, teamIdentifier);
}

void FanHelperService::start()
{
    assertMain();
    auto lock = FanHelperLock::acquire(m_files, m_configuration.lockFile, m_configuration.lockOwner);
    switch (lock.outcome()) {
    case FanHelperLock::Outcome::acquired:
        break;
    case FanHelperLock::Outcome::heldElsewhere:
        diagnostic("fan helper: another helper holds {}", m_configuration.lockFile.string());
        m_exited = true;
        m_exit(ExitReason::alreadyRunning);
        return;
    case FanHelperLock::Outcome::refused:
        diagnostic("fan helper: lock file {} refused: {}", m_configuration.lockFile.string(), lock.reason());
        m_exited = true;
        m_exit(ExitReason::lockRefused);
        return;
    }
    m_lock.emplace(std::move(lock));

    if (m_files.exists(m_configuration.markerFile))
        restoreNow("marker left by a crash");

    FanHelperTransport::Handlers handlers {
        [this](SessionID session) { opened(session); },
        [this](SessionID session) { closed(session); },
        [this](SessionID session, FanHelperRequest request, FanHelperTransport::Reply reply) {
            this->request(session, request, reply);
        },
    };
    auto listening = m_transport.listen(codeRequirement(m_configuration.appIdentifier, m_configuration.teamIdentifier),
        std::move(handlers));
    if (!listening) {
        diagnostic("fan helper: cannot listen: {}", listening.error().message);
        m_exited = true;
        m_exit(ExitReason::cannotListen);
        return;
    }
    scheduleIdleExitIfIdle();
}

void FanHelperService::opened(SessionID session)
{
    assertMain();
    m_sessions.insert(session);
    cancel(m_idleExit);
}

void FanHelperService::closed(SessionID session)
{
    assertMain();
    m_sessions.erase(session);
    if (m_terminated)
        return;
    if (m_controller == session)
        restoreNow("controlling session closed");
    scheduleIdleExitIfIdle();
}

void FanHelperService::request(SessionID session, const FanHelperRequest& request, const FanHelperTransport::Reply& reply)
{
    assertMain();
    // A request that was already on its way when the helper was ended must not take the fans again.
    if (m_terminated) {
        reply(response(session, {}));
        return;
    }
    if (m_restorePending) {
        reply(response(session, restorePendingMessage));
        return;
    }
    switch (request.kind) {
    case FanHelperRequest::Kind::apply:
        reply(apply(session, request.level));
        break;
    case FanHelperRequest::Kind::heartbeat:
        reply(heartbeat(session));
        break;
    case FanHelperRequest::Kind::restore:
        reply(restore(session));
        break;
    case FanHelperRequest::Kind::status:
        reply(response(session, {}));
        break;
    }
    scheduleIdleExitIfIdle();
}

FanHelperResponse FanHelperService::apply(SessionID session, int level)
{
    if (m_controller && m_controller != session)
        return response(session, anotherSessionMessage);

    // The marker goes down before the first manual write, so that a crash at any later point is recovered.
    // Without it a crash would leave the fans manual with nothing to bring them back, so nothing is applied
    // (and fans already held go back to automatic).
    if (auto written = m_files.writeMarker(m_configuration.markerFile); !written) {
        diagnostic("fan helper: cannot write marker, apply {} refused: {}", level, written.error().context);
        if (m_controller || m_engine.holdsManual())
            restoreNow("marker cannot be written");
        return response(session, markerUnwritableMessage);
    }

    auto applied = m_engine.apply(level);
    if (!applied) {
        diagnostic("fan helper: apply {} failed: {} ({})", level, applied.error().code, applied.error().context);
        releaseController();
        if (m_engine.holdsManual())
            restoreNow("apply failed and its restore did not take");
        else
            (void)m_files.removeMarker(m_configuration.markerFile);
        return response(session, applied.error().message);
    }
    m_controller = session;
    m_level = level;
    watchHeartbeats();
    return response(session, {});
}

FanHelperResponse FanHelperService::heartbeat(SessionID session)
{
    if (m_controller == session) {
        watchHeartbeats();
        return response(session, {});
    }
    return response(session, m_controller ? anotherSessionMessage : std::string_view {});
}

FanHelperResponse FanHelperService::restore(SessionID session)
{
    if (m_controller && m_controller != session)
        return response(session, anotherSessionMessage);
    bool took = restoreNow("asked to restore");
    return response(session, took ? std::string_view {} : restoreRetryMessage);
}

FanHelperResponse FanHelperService::response(SessionID session, std::string_view message) const
{
    return FanHelperResponse { m_controller == session, m_level, std::string(message) };
}

bool FanHelperService::restoreNow(std::string_view why)
{
    assertMain();
    releaseController();
    cancel(m_restoreRetry);
    if (!m_engine.restoreAutomatic(FanControlEngine::restoreAttempts)) {
        diagnostic("fan helper: restore ({}) did not take, retrying in {} ms", why,
            std::chrono::duration_cast<std::chrono::milliseconds>(restoreRetryInterval).count());
        m_restorePending = true;
        m_restoreRetry = m_runtime.mainQueue().postAfter(restoreRetryInterval, [this] { restoreNow("retry"); });
        return false;
    }
    m_restorePending = false;
    if (auto removed = m_files.removeMarker(m_configuration.markerFile); !removed)
        diagnostic("fan helper: cannot remove marker: {}", removed.error().message);
    scheduleIdleExitIfIdle();
    return true;
}

void FanHelperService::releaseController()
{
    m_controller.reset();
    m_level.reset();
    cancel(m_heartbeatDeadline);
}

void FanHelperService::watchHeartbeats()
{
    cancel(m_heartbeatDeadline);
    m_heartbeatDeadline = m_runtime.mainQueue().postAfter(heartbeatTimeout, [this] {
        if (m_controller)
            restoreNow("heartbeats stopped");
    });
}

void FanHelperService::scheduleIdleExitIfIdle()
{
    if (m_exited || !m_sessions.empty() || m_controller || m_restorePending || m_idleExit)
        return;
    m_idleExit = m_runtime.mainQueue().postAfter(idleExitDelay, [this] {
        m_idleExit.reset();
        if (!m_sessions.empty() || m_controller || m_restorePending)
            return;
        m_exited = true;
        m_transport.stop();
        m_exit(ExitReason::idle);
    });
}

void FanHelperService::cancel(WorkItemHandle& item)
{
    if (item)
        item->cancel();
    item.reset();
}

void FanHelperService::assertMain() const
{
    m_runtime.mainQueue().assertMainThread(who);
}

} // namespace quillmar
