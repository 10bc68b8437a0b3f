#pragma once

#include "core/switcher/AppRecency.h"
#include "core/switcher/AppTerminator.h"
#include "core/switcher/ClickMonitor.h"
#include "core/switcher/SwitcherPanel.h"
#include "core/switcher/SymbolicHotKeys.h"

namespace quillmar {

// The ports of the app and window switcher where the system offers nothing: each answers "not here" and changes
// nothing. System factories hand them out for ports without a backend; the command line and the tests use them
// too.

// No activation history to watch: claims are accepted and nothing is ever known to be recent.
class NullAppRecency final : public AppRecency {
public:
    void claim(std::string_view client, WarmPreviews previews) override;
    void release(std::string_view client) override;
    std::vector<std::int32_t> recentPIDs() const override;
};

// Applications can't be asked to quit on this system: every request fails, and every app reads as running.
class NullAppTerminator final : public AppTerminator {
public:
    bool terminate(std::int32_t pid) override;
    bool isRunning(std::int32_t pid) const override;
};

// No global mouse monitor on this system: a session then ends only by its keys.
class NullClickMonitor final : public ClickMonitor {
public:
    bool start(std::function<void()> onClick) override;
    void stop() override;
};

// No panel on this system: the switcher still switches on a quick trigger-Tab-release, and shows nothing.
class NullSwitcherPanel final : public SwitcherPanel {
public:
    std::optional<Rect> screenFrame() override;
    void show(SwitcherModel& model) override;
    void hide() override;
};

// No system shortcuts to read or switch: the system switcher is never taken over.
class NullSymbolicHotKeys final : public SymbolicHotKeys {
public:
    std::optional<Value> value(int hotKey) override;
    bool setEnabled(int hotKey, bool enabled) override;
};

} // namespace quillmar
