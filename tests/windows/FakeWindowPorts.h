#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/windows/Haptics.h"
#include "core/windows/LayoutHud.h"
#include "core/windows/MouseEvents.h"
#include "core/windows/Screens.h"
#include "core/windows/SnapOverlay.h"
#include "core/windows/SystemPreferences.h"

namespace quillmar {

class FakeScreens final : public Screens {
public:
    std::vector<ScreenInfo> list;
    double mainHeight = 0;
    // Runs after each read, to change the displays between two reads.
    std::function<void()> afterRead;

    std::vector<ScreenInfo> screens() const override
    {
        auto result = list;
        if (afterRead)
            afterRead();
        return result;
    }
    double mainDisplayHeight() const override { return mainHeight; }
};

class RecordingHaptics final : public Haptics {
public:
    int taps = 0;
    void performAlignment() override { ++taps; }
};

class RecordingHud final : public LayoutHud {
public:
    std::vector<std::pair<std::string, std::string>> shown; // title, symbol
    void show(std::string_view title, std::string_view symbol) override
    {
        shown.emplace_back(std::string(title), std::string(symbol));
    }
};

class RecordingOverlay final : public SnapOverlay {
public:
    std::optional<Rect> visible; // bottom-left
    int shows = 0;
    int hides = 0;
    void show(const Rect& frame, const ScreenInfo&) override
    {
        visible = frame;
        ++shows;
    }
    void hide() override
    {
        visible.reset();
        ++hides;
    }
};

class FakeMouseEvents final : public MouseEvents {
public:
    bool leftDown = false;
    bool rightDown = false;
    std::vector<InputEvent> posted;
    std::vector<InputEvent::Location> warps;

    bool isButtonDown(MouseButton button) const override { return button == MouseButton::left ? leftDown : rightDown; }
    bool post(const InputEvent& event) override
    {
        posted.push_back(event);
        return true;
    }
    void warpPointer(InputEvent::Location location) override { warps.push_back(location); }
};

class FakeSystemPreferences final : public SystemPreferences {
public:
    std::vector<std::pair<std::pair<std::string, std::string>, double>> values;

    void set(std::string domain, std::string key, double value)
    {
        values.push_back({ { std::move(domain), std::move(key) }, value });
    }
    std::optional<double> number(std::string_view domain, std::string_view key) const override
    {
        for (const auto& [where, value] : values) {
            if (where.first == domain && where.second == key)
                return value;
        }
        return std::nullopt;
    }
};

} // namespace quillmar
