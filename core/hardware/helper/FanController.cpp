#include "core/hardware/helper/FanController.h"

#include <algorithm>

#include "core/base/Diagnostics.h"

namespace quillmar {

namespace {

constexpr std::string_view who = "FanController";

void cancel(WorkItemHandle& item)
{
    if (item)
        item->cancel();
    item.reset();
}

} // namespace

FanController::FanController(Runtime& runtime, Settings& settings, FanHelperClient& client, TemperatureSensors& sensors)
    : m_runtime(runtime)
    , m_settings(settings)
    , m_client(client)
    , m_sensors(sensors)
    , m_self(std::make_shared<FanController*>(this))
{
    assertMain();
    FanConfiguration::registerDefaults(m_settings);
    m_observer = m_settings.observe([this](std::string_view key) {
        bool configurationChanged = key == FanConfiguration::modeKey.name || key == FanConfiguration::levelKey.name
            || key == FanConfiguration::curveKey().name;
        if (!configurationChanged)
            return;
        // The user's change is what takes the fans again after the helper let go of them.
        m_dropped = false;
        if (!m_enabled || m_asleep)
            return;
        m_requestedLevel.reset();
        applyConfiguration();
        scheduleSample();
    });
}

FanController::~FanController()
{
    m_settings.removeObserver(m_observer);
    cancel(m_heartbeat);
    cancel(m_sample);
}

void FanController::setEnabled(bool enabled)
{
    assertMain();
    if (enabled == m_enabled)
        return;
    m_enabled = enabled;
    m_dropped = false;
    if (!enabled) {
        stop();
        return;
    }
    if (ensureHelper() && !m_asleep)
        start();
}

void FanController::shutdown()
{
    assertMain();
    if (m_enabled)
        stop();
    m_enabled = false;
}

void FanController::systemWillSleep()
{
    assertMain();
    m_asleep = true;
    // The app cannot send heartbeats while asleep, so the fans go back to the system until it wakes.
    if (m_enabled)
        stop();
}

void FanController::systemDidWake()
{
    assertMain();
    m_asleep = false;
    if (m_enabled && !m_dropped && m_settings.value(FanConfiguration::resumeAfterWakeKey))
        start();
}

bool FanController::ensureHelper()
{
    auto bundled = m_client.bundledVersion();
    if (m_settings.value(FanConfiguration::helperVersionKey) == bundled)
        return true;
    auto registered = m_client.registerHelper();
    if (!registered) {
        diagnostic("fans: helper {} not registered: {}", bundled, registered.error().context);
        m_message = registered.error().message;
        return false;
    }
    m_settings.set(FanConfiguration::helperVersionKey, bundled);
    return true;
}

void FanController::start()
{
    m_requestedLevel.reset();
    applyConfiguration();
    scheduleHeartbeat();
    scheduleSample();
}

void FanController::stop()
{
    cancel(m_heartbeat);
    cancel(m_sample);
    m_requestedLevel.reset();
    m_curveUnreadable = false;
    send(FanHelperRequest::restore());
}

void FanController::applyConfiguration()
{
    auto configuration = FanConfiguration::load(m_settings);
    int level = configuration.level;
    m_curveUnreadable = false;
    if (configuration.mode == FanConfiguration::Mode::curve) {
        auto readings = m_sensors.read();
        std::optional<int> highest;
        for (const auto& curve : configuration.curves) {
            if (auto celsius = temperature(curve.source, readings))
                highest = std::max(highest.value_or(0), curve.level(*celsius));
        }
        if (!highest && !configuration.curves.empty()) {
            // A level held without knowing how warm the Mac is could be too low: the system's own control
            // takes over until the temperature reads again.
            m_curveUnreadable = true;
            m_message = unreadableCurveMessage;
            if (m_controller || m_requestedLevel) {
                m_requestedLevel.reset();
                send(FanHelperRequest::restore());
            }
            return;
        }
        level = highest.value_or(0);
    }
    // A curve sample that lands on the level already held sends nothing.
    if (m_controller && m_requestedLevel == level)
        return;
    m_requestedLevel = level;
    send(FanHelperRequest::apply(level));
}

void FanController::send(const FanHelperRequest& request)
{
    std::weak_ptr<FanController*> self = m_self;
    auto& mainQueue = m_runtime.mainQueue();
    auto kind = request.kind;
    m_client.send(request, FanReplyOnce([self, &mainQueue, kind](std::optional<FanHelperResponse> response) {
        mainQueue.post([self, kind, response = std::move(response)] {
            if (auto controller = self.lock())
                (*controller)->received(kind, response);
        });
    }));
}

void FanController::received(FanHelperRequest::Kind kind, const std::optional<FanHelperResponse>& response)
{
    assertMain();
    if (!response) {
        m_controller = false;
        m_level.reset();
        m_requestedLevel.reset();
        m_message = unreachableMessage;
        return;
    }
    bool wasController = m_controller;
    m_controller = response->controller;
    m_level = response->level;
    m_message = response->message;
    // An apply the helper refused is tried again at the next sample or change.
    if (kind == FanHelperRequest::Kind::apply && !m_controller)
        m_requestedLevel.reset();
    // A heartbeat answered without control: the helper gave the fans back on its own, because it heard
    // nothing from this app for too long. Taking them straight back would hide that the app was stuck.
    if (kind == FanHelperRequest::Kind::heartbeat && wasController && !m_controller && m_enabled && !m_asleep) {
        diagnostic("fans: the helper dropped control ({})", response->message);
        m_dropped = true;
        m_requestedLevel.reset();
    }
    if (m_message.empty() && m_dropped)
        m_message = droppedMessage;
    else if (m_message.empty() && m_curveUnreadable)
        m_message = unreadableCurveMessage;
}

void FanController::scheduleHeartbeat()
{
    cancel(m_heartbeat);
    m_heartbeat = m_runtime.mainQueue().postAfter(heartbeatInterval, [this] {
        m_heartbeat.reset();
        if (!m_enabled || m_asleep)
            return;
        if (m_controller)
            send(FanHelperRequest::heartbeat());
        scheduleHeartbeat();
    });
}

void FanController::scheduleSample()
{
    cancel(m_sample);
    if (FanConfiguration::load(m_settings).mode != FanConfiguration::Mode::curve)
        return;
    m_sample = m_runtime.mainQueue().postAfter(curveSampleInterval, [this] {
        m_sample.reset();
        // After the helper dropped control, the user's next change starts sampling again.
        if (!m_enabled || m_asleep || m_dropped)
            return;
        applyConfiguration();
        scheduleSample();
    });
}

void FanController::assertMain() const
{
    m_runtime.mainQueue().assertMainThread(who);
}

} // namespace quillmar
