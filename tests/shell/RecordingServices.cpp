#include "tests/shell/RecordingServices.h"

namespace quillmar {

namespace {

std::string onOff(bool on)
{
    return on ? " on" : " off";
}

struct Clipboard final : ClipboardService {
    explicit Clipboard(CallLog& calls) : log(calls) { }
    void setCleansLinks(bool on) override { log.push_back("clipboard.setCleansLinks" + onOff(on)); }
    void start() override { log.push_back("clipboard.start"); }
    void stop() override { log.push_back("clipboard.stop"); }
    void flush() override { log.push_back("clipboard.flush"); }
    CallLog& log;
};

struct KeepAwake final : KeepAwakeService {
    KeepAwake(CallLog& calls, bool initially) : log(calls), active(initially) { }
    bool isActive() const override { return active; }
    void toggle() override { log.push_back("keepAwake.toggle"); }
    void stop() override
    {
        active = false;
        log.push_back("keepAwake.stop");
    }
    CallLog& log;
    bool active;
};

struct Countdown final : CountdownService {
    Countdown(CallLog& calls, bool initially) : log(calls), running(initially) { }
    bool isRunning() const override { return running; }
    void cancel() override { log.push_back("countdown.cancel"); }
    CallLog& log;
    bool running;
};

struct Scratchpad final : ScratchpadService {
    Scratchpad(CallLog& calls, bool initially) : log(calls), pending(initially) { }
    bool hasPendingSave() const override { return pending; }
    void saveNow() override
    {
        pending = false;
        log.push_back("scratchpad.saveNow");
    }
    CallLog& log;
    bool pending;
};

struct Snippets final : SnippetService {
    explicit Snippets(CallLog& calls) : log(calls) { }
    void setEnabled(bool on) override { log.push_back("snippets.setEnabled" + onOff(on)); }
    CallLog& log;
};

struct QuitProtection final : QuitProtectionService {
    explicit QuitProtection(CallLog& calls) : log(calls) { }
    void setEnabled(bool on) override { log.push_back("quitProtection.setEnabled" + onOff(on)); }
    CallLog& log;
};

struct Audio final : AudioDeviceService {
    explicit Audio(CallLog& calls) : log(calls) { }
    void stopWatching() override { log.push_back("audio.stopWatching"); }
    CallLog& log;
};

struct Alerts final : MonitorAlertsService {
    explicit Alerts(CallLog& calls) : log(calls) { }
    void setEnabled(bool on) override { log.push_back("alerts.setEnabled" + onOff(on)); }
    CallLog& log;
};

struct Readouts final : MenuBarReadouts {
    explicit Readouts(CallLog& calls) : log(calls) { }
    void apply() override { log.push_back("readouts.apply"); }
    CallLog& log;
};

struct Input final : InputRefresher {
    explicit Input(CallLog& calls) : log(calls) { }
    void setNeedsRefresh() override { log.push_back("input.setNeedsRefresh"); }
    CallLog& log;
};

struct Layout final : WindowLayoutService {
    explicit Layout(CallLog& calls) : log(calls) { }
    void applyLayout(ShortcutAction action) override { log.push_back("layout.apply " + std::string(rawValue(action))); }
    CallLog& log;
};

class RecordingModule final : public FeatureModule {
public:
    RecordingModule(ModuleID id, CallLog& log) : m_id(id), m_log(log) { }
    std::string_view name() const override { return quillmar::name(m_id); }
    std::span<const FeatureID> features() const override { return ownedFeatures(m_id); }
    std::vector<PanelAction> panelActions() const override { return {}; }
    std::vector<FeatureID> settingsPages() const override { return {}; }
    void apply(const FeatureStore&) override { m_log.push_back(std::string(name()) + ".apply"); }
    bool perform(ShortcutAction action) override
    {
        m_log.push_back(std::string(name()) + ".perform " + std::string(rawValue(action)));
        return true;
    }
    void settingsChanged() override { }
    void shutdown() override { m_log.push_back(std::string(name()) + ".shutdown"); }

private:
    ModuleID m_id;
    CallLog& m_log;
};

} // namespace

ShellServices recordingServices(CallLog& log, bool keepAwakeActive, bool countdownRunning, bool scratchpadPending)
{
    ShellServices services;
    services.clipboard = std::make_unique<Clipboard>(log);
    services.keepAwake = std::make_unique<KeepAwake>(log, keepAwakeActive);
    services.countdown = std::make_unique<Countdown>(log, countdownRunning);
    services.scratchpad = std::make_unique<Scratchpad>(log, scratchpadPending);
    services.snippets = std::make_unique<Snippets>(log);
    services.quitProtection = std::make_unique<QuitProtection>(log);
    services.audioDevices = std::make_unique<Audio>(log);
    services.alerts = std::make_unique<Alerts>(log);
    services.menuBarReadouts = std::make_unique<Readouts>(log);
    services.input = std::make_unique<Input>(log);
    services.layout = std::make_unique<Layout>(log);
    return services;
}

Modules recordingModules(CallLog& log)
{
    std::vector<std::unique_ptr<FeatureModule>> modules;
    for (auto id : allModuleIDs)
        modules.push_back(std::make_unique<RecordingModule>(id, log));
    return Modules(std::move(modules));
}

} // namespace quillmar
