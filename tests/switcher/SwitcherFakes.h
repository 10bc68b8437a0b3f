#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/desktop/KeyCodes.h"
#include "core/desktop/KeyboardLayout.h"
#include "core/switcher/AppRecency.h"
#include "core/switcher/AppTerminator.h"
#include "core/switcher/ClickMonitor.h"
#include "core/switcher/SwitcherPanel.h"
#include "core/switcher/SymbolicHotKeys.h"
#include "core/windows/WindowActions.h"
#include "core/windows/WindowCatalog.h"

namespace quillmar {

// Running apps and their windows in memory, in catalogue order.
class FakeWindowCatalog final : public WindowCatalog {
public:
    std::vector<AppSnapshot> runningApps() const override { return apps; }
    std::vector<WindowEntry> windows(const std::vector<AppSnapshot>& of, WindowCatalogOptions options) const override
    {
        std::vector<WindowEntry> result;
        for (const auto& window : entries) {
            bool wanted = std::any_of(of.begin(), of.end(), [&](const AppSnapshot& app) { return app.pid == window.pid; });
            if (!wanted || (window.isMinimized && !options.includeMinimized)
                || (!window.isOnCurrentSpace && !options.includeOtherSpaces))
                continue;
            result.push_back(window);
        }
        return result;
    }

    void removeWindow(std::uint32_t number)
    {
        std::erase_if(entries, [number](const WindowEntry& entry) { return entry.windowNumber == number; });
    }

    std::vector<AppSnapshot> apps;
    std::vector<WindowEntry> entries;
};

// Records what was asked: "focus 11", "close 11", "activate 300".
class FakeWindowActions final : public WindowActions {
public:
    bool focus(const WindowEntry& entry) override
    {
        calls.push_back("focus " + std::to_string(entry.windowNumber));
        return true;
    }
    bool close(const WindowEntry& entry) override
    {
        calls.push_back("close " + std::to_string(entry.windowNumber));
        return closeWorks;
    }
    void setMinimized(const WindowEntry& entry, bool minimized, std::function<void(bool)> then) override
    {
        calls.push_back((minimized ? "minimize " : "unminimize ") + std::to_string(entry.windowNumber));
        then(true);
    }
    bool activateApp(std::int32_t pid) override
    {
        calls.push_back("activate " + std::to_string(pid));
        return true;
    }

    std::vector<std::string> calls;
    bool closeWorks = true;
};

class FakeAppRecency final : public AppRecency {
public:
    void claim(std::string_view client, WarmPreviews previews) override { claims[std::string(client)] = previews; }
    void release(std::string_view client) override { claims.erase(std::string(client)); }
    std::vector<std::int32_t> recentPIDs() const override { return recent; }

    std::map<std::string, WarmPreviews> claims;
    std::vector<std::int32_t> recent;
};

class FakeAppTerminator final : public AppTerminator {
public:
    bool terminate(std::int32_t pid) override
    {
        terminated.push_back(pid);
        return terminateWorks;
    }
    bool isRunning(std::int32_t pid) const override { return !exited.contains(pid); }

    std::vector<std::int32_t> terminated;
    std::set<std::int32_t> exited;
    bool terminateWorks = true;
};

class FakeSwitcherPanel final : public SwitcherPanel {
public:
    std::optional<Rect> screenFrame() override { return screen; }
    void show(SwitcherModel&) override
    {
        ++shows;
        visible = true;
    }
    void hide() override
    {
        ++hides;
        visible = false;
    }

    std::optional<Rect> screen = Rect { 0, 0, 1440, 900 };
    bool visible = false;
    int shows = 0;
    int hides = 0;
};

class FakeClickMonitor final : public ClickMonitor {
public:
    bool start(std::function<void()> onClick) override
    {
        m_onClick = std::move(onClick);
        return true;
    }
    void stop() override { m_onClick = nullptr; }

    bool isRunning() const { return static_cast<bool>(m_onClick); }
    // A click outside the application's windows, as the system reports it on the main queue.
    void click()
    {
        if (m_onClick)
            m_onClick();
    }

private:
    std::function<void()> m_onClick;
};

// A US layout for the keys the tests type; records the flags it was asked with.
class FakeKeyboardLayout final : public KeyboardLayout {
public:
    std::string characters(const InputEvent& event) override
    {
        askedFlags.push_back(event.flags);
        static const std::map<std::uint32_t, std::string> letters { { 0, "a" }, { 1, "s" }, { 12, "q" }, { 13, "w" },
            { 14, "e" }, { 31, "o" }, { 35, "p" }, { 49, " " } };
        auto found = letters.find(event.keyCode);
        if (found == letters.end())
            return {};
        if ((event.flags & 0x80000) != 0)
            return "\u2211"; // what Option-W would type
        return found->second;
    }

    std::vector<std::uint64_t> askedFlags;
};

// Command-Tab, until a test moves it.
class FakeSymbolicHotKeys final : public SymbolicHotKeys {
public:
    std::optional<Value> value(int hotKey) override
    {
        if (hotKey != applicationSwitcher)
            return std::nullopt;
        return switcherKey;
    }
    bool setEnabled(int hotKey, bool on) override
    {
        calls.push_back(std::string(on ? "enable " : "disable ") + std::to_string(hotKey));
        if (!available)
            return false;
        enabled = on;
        return true;
    }

    std::optional<Value> switcherKey = Value { KeyCode::tab, EventFlags::command };
    bool available = true;
    bool enabled = true;
    std::vector<std::string> calls;
};

} // namespace quillmar
