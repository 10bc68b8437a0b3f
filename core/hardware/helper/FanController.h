#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/hardware/fans/FanConfiguration.h"
#include "core/hardware/fans/TemperatureSensors.h"
#include "core/hardware/helper/FanHelperClient.h"
#include "core/runtime/Runtime.h"
#include "core/settings/Settings.h"

namespace quillmar {

// The app's side of fan control: keeps the helper up to date, applies the configured level or the curve's,
// sends a heartbeat every second while it controls the fans, and hands them back to automatic when fan
// control is turned off, the app quits, the Mac goes to sleep (and takes them again after wake when
// "monitor.fan.resumeAfterWake" is on) or a curve's temperature can't be read (taken again once it reads).
// Confined to the main queue; replies are brought back to it.
class FanController final {
public:
    static constexpr Duration heartbeatInterval = seconds(1.0);
    // How late a heartbeat may fire, for a timer that lets the system coalesce wake-ups.
    static constexpr Duration heartbeatTolerance = seconds(0.1);
    static constexpr Duration curveSampleInterval = seconds(2.0);
    static constexpr std::string_view unreadableCurveMessage = "The curve's temperature can't be read on this Mac";
    static constexpr std::string_view unreachableMessage = "The fan helper isn't responding.";
    static constexpr std::string_view droppedMessage =
        "The fans went back to automatic because Quillmar stopped responding. Change a fan setting to take them again.";

    FanController(Runtime& runtime, Settings& settings, FanHelperClient& client, TemperatureSensors& sensors);
    ~FanController();

    FanController(const FanController&) = delete;
    FanController& operator=(const FanController&) = delete;

    // Fan control switched on or off. On: installs the helper again when its version differs from
    // "monitor.fan.helperVersion", then applies. Off: restores automatic.
    void setEnabled(bool enabled);
    bool isEnabled() const { return m_enabled; }

    // At quit: restores automatic and stops every timer.
    void shutdown();

    void systemWillSleep();
    void systemDidWake();

    // The sentence to show, empty when all is well.
    const std::string& message() const { return m_message; }
    // The level the helper holds for this app; none while automatic.
    std::optional<int> level() const { return m_level; }
    bool isController() const { return m_controller; }
    // True after the helper let go of the fans on its own (it heard no heartbeat in time, so the app was
    // stuck): `message()` says so, and nothing is applied again until the user changes a fan setting or turns
    // fan control off and on.
    bool controlDropped() const { return m_dropped; }

private:
    bool ensureHelper();
    void start();
    void stop();
    void applyConfiguration();
    void send(const FanHelperRequest& request);
    void received(FanHelperRequest::Kind kind, const std::optional<FanHelperResponse>& response);
    void scheduleHeartbeat();
    void scheduleSample();
    void assertMain() const;

    Runtime& m_runtime;
    Settings& m_settings;
    FanHelperClient& m_client;
    TemperatureSensors& m_sensors;
    // Replies hop back to the main queue and check this first: the controller may be gone by then.
    std::shared_ptr<FanController*> m_self;
    Settings::ObserverId m_observer = 0;

    bool m_enabled = false;
    bool m_asleep = false;
    bool m_controller = false;
    bool m_dropped = false;
    bool m_curveUnreadable = false;
    std::optional<int> m_level;
    std::optional<int> m_requestedLevel;
    std::string m_message;
    WorkItemHandle m_heartbeat;
    WorkItemHandle m_sample;
};

} // namespace quillmar
