#pragma once

#include <memory>

#include <gtest/gtest.h>

#include "core/runtime/VirtualRuntime.h"
#include "core/settings/MemorySettingsBackend.h"
#include "core/settings/Settings.h"
#include "core/windows/WindowManager.h"
#include "core/windows/WindowsPreferences.h"
#include "tests/windows/FakeWindowPorts.h"
#include "tests/windows/FakeWindowWorld.h"

namespace quillmar {

// One 1440 × 900 main display (a 25-point menu bar, so the visible frame is 1440 × 875 from y = 0 up), an
// editor app (pid 100) in front with one window, and a window manager over all of it.
class WindowsFixture : public testing::Test {
protected:
    static constexpr std::int32_t editorPid = 100;
    static constexpr std::uint32_t editorWindow = 11;
    static constexpr Rect mainFrame { 0, 0, 1440, 900 };
    static constexpr Rect mainVisible { 0, 0, 1440, 875 };

    WindowsFixture()
    {
        screens.list = { { mainFrame, mainVisible } };
        screens.mainHeight = 900;
        world.addApp({ .pid = editorPid, .name = "Editor", .bundleID = "com.example.editor",
            .focusedWindow = editorWindow });
        world.addWindow({ .number = editorWindow, .pid = editorPid, .title = "notes.txt", .frame = { 200, 150, 600, 400 } });
        world.frontmost = editorPid;
    }

    FakeWindowWorld::Window& editor() { return *world.window(editorWindow); }
    static AXElement element(std::uint32_t number) { return FakeWindowWorld::windowElement(number); }

    // Adds a second display to the right of the main one, its top edge level with the main display's.
    void addRightDisplay()
    {
        screens.list.push_back({ { 1440, -180, 1920, 1080 }, { 1440, -180, 1920, 1080 } });
    }

    VirtualRuntime runtime;
    Settings settings { std::make_unique<MemorySettingsBackend>() };
    WindowsPreferences preferences { settings };
    FakeWindowWorld world;
    FakeScreens screens;
    RecordingHaptics haptics;
    RecordingHud hud;
    WindowManager manager { runtime, { world, world, screens, haptics, hud }, preferences };
};

} // namespace quillmar
