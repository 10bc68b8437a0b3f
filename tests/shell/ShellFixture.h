#pragma once

#include <memory>

#include "core/runtime/VirtualRuntime.h"
#include "core/settings/MemorySettingsBackend.h"
#include "core/shell/AppServices.h"
#include "platform/null/NullEventTapPorts.h"
#include "tests/hotkeys/FakeHotKeyRegistrar.h"
#include "tests/shell/RecordingServices.h"

namespace quillmar {

// Which recording services report work in progress when the fixture starts.
struct RunningServices {
    bool keepAwake = false;
    bool countdown = false;
    bool scratchpadSave = false;
};

// A service container on virtual time with recording services and modules and a fake registrar.
struct ShellFixture {
    using Running = RunningServices;

    explicit ShellFixture(nlohmann::json saved = nlohmann::json::object(), Running running = Running())
        : settings(std::make_unique<MemorySettingsBackend>(std::move(saved)))
        , services(std::make_unique<AppServices>(runtime, settings, AppServices::SystemPorts { registrar, events },
              recordingServices(log, running.keepAwake, running.countdown, running.scratchpadSave),
              recordingModules(log)))
    {
    }

    static nlohmann::json allRawValues()
    {
        nlohmann::json values = nlohmann::json::array();
        for (auto feature : allFeatures())
            values.push_back(rawValue(feature));
        return values;
    }

    // Presses the hot key registered for `action`, as the system would.
    void press(ShortcutAction action)
    {
        for (std::uint32_t number = 1; number <= allShortcutActions().size(); ++number) {
            if (services->hotKeys().action(number) == action)
                registrar.press(HotKeyID { HotKeyCenter::signature, number });
        }
    }

    VirtualRuntime runtime;
    Settings settings;
    FakeHotKeyRegistrar registrar;
    NullEventTapSource events;
    CallLog log;
    std::unique_ptr<AppServices> services;
};

} // namespace quillmar
