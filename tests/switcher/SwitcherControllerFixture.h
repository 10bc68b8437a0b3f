#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <optional>

#include "core/eventtap/EventTap.h"
#include "core/runtime/VirtualRuntime.h"
#include "core/settings/MemorySettingsBackend.h"
#include "core/settings/Settings.h"
#include "core/switcher/SwitcherController.h"
#include "core/switcher/SwitcherModel.h"
#include "core/switcher/SystemSwitcherTakeover.h"
#include "tests/eventtap/FakeEventTapSource.h"
#include "tests/switcher/SwitcherFakes.h"
#include "tests/switcher/SwitcherTestSupport.h"

namespace quillmar {

inline constexpr std::uint64_t option = EventFlags::option;
inline constexpr std::uint64_t command = EventFlags::command;
inline constexpr std::uint64_t shift = EventFlags::shift;

// The switcher on virtual time behind the real shared tap, its events delivered through the tap's worker
// as the system would. Mail (pid 1, frontmost) has windows 11 and 12, Notes (2) has 21, Music (3) has 31
// and 32, used in that order: the cards are Mail*[w11 w12] Notes[w21] Music[w31 w32].
class SwitcherControllerFixture : public testing::Test {
protected:
    void SetUp() override
    {
        catalog.apps = { { 3, "Music", "", false, false }, { 1, "Mail", "", false, true }, { 2, "Notes", "", false, false } };
        catalog.entries = {
            { 11, 1, "Mail", "Inbox", { 0, 0, 800, 600 }, false, true },
            { 12, 1, "Mail", "Draft", { 0, 0, 800, 600 }, false, true },
            { 21, 2, "Notes", "Groceries", { 0, 0, 800, 600 }, false, true },
            { 31, 3, "Music", "Library", { 0, 0, 800, 600 }, false, true },
            { 32, 3, "Music", "Miniplayer", { 0, 0, 800, 600 }, false, true },
        };
        recency.recent = { 1, 2, 3 };
    }

    void TearDown() override
    {
        controller.reset();
        runtime.runUntilIdle();
    }

    SwitcherController& start()
    {
        takeover.emplace(hotKeys, settings);
        controller.emplace(runtime, model,
            SwitcherPorts { tap, catalog, actions, recency, terminator, panel, clicks, keyboard, *takeover },
            [this] { return options; }, [this] { return suspended; });
        controller->setEnabled(true);
        runtime.runUntilIdle();
        return *controller;
    }

    // Through the filter tap, and everything the handler forwards; the verdict the system gets.
    std::optional<InputEvent> send(std::uint32_t type, std::uint32_t keyCode, std::uint64_t flags)
    {
        InputEvent event;
        event.type = type;
        event.keyCode = keyCode;
        event.flags = flags;
        auto delivery = source.deliverFilter(event);
        runtime.runUntilIdle();
        EXPECT_TRUE(delivery->done);
        return delivery->verdict;
    }
    bool keyDown(std::uint32_t keyCode, std::uint64_t flags) { return !send(EventType::keyDown, keyCode, flags); }
    bool keyUp(std::uint32_t keyCode, std::uint64_t flags) { return !send(EventType::keyUp, keyCode, flags); }
    bool flags(std::uint64_t held) { return !send(EventType::flagsChanged, 0, held); }

    // A key-down the tap's record cannot mark as repeated, handed to the controller directly.
    void repeatedKeyDown(std::uint32_t keyCode, std::uint64_t held, std::string characters = {})
    {
        controller->handle(SwitcherKeyEvent { EventType::keyDown, keyCode, held, true, std::move(characters) });
        runtime.runUntilIdle();
    }

    // Rounded to whole nanoseconds, so that 0.05 + 0.01 + 0.09 + 0.01 s is exactly 0.16 s.
    void advance(double seconds) { runtime.advance(Duration(std::llround(seconds * 1e9))); }

    // Option-Tab, then the panel's delay.
    void openPanel(std::uint64_t trigger = option)
    {
        keyDown(KeyCode::tab, trigger);
        advance(0.1);
        ASSERT_TRUE(controller->isShown());
    }

    std::optional<std::size_t> selected() { return model.selectedIndex(); }

    VirtualRuntime runtime;
    FakeEventTapSource source { runtime };
    EventTap tap { runtime, source };
    FakeWindowCatalog catalog;
    FakeWindowActions actions;
    FakeAppRecency recency;
    FakeAppTerminator terminator;
    FakeSwitcherPanel panel;
    FakeClickMonitor clicks;
    FakeKeyboardLayout keyboard;
    FakeSymbolicHotKeys hotKeys;
    Settings settings { std::make_unique<MemorySettingsBackend>() };
    std::optional<SystemSwitcherTakeover> takeover;
    SwitcherModel model { runtime.mainQueue() };
    SwitcherOptions options;
    bool suspended = false;
    std::optional<SwitcherController> controller;
};

} // namespace quillmar
