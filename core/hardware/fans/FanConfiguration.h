#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "core/hardware/fans/FanCurve.h"
#include "core/settings/Settings.h"

namespace quillmar {

// What the user chose for the fans, kept in the settings: a fixed level, or curves (the fans follow the
// highest level any curve asks for).
struct FanConfiguration {
    enum class Mode { manual, curve };

    // "manual" or "curve"; anything else reads as manual.
    static constexpr SettingKey<std::string_view> modeKey { "monitor.fan.mode", "manual" };
    // Percent, clamped to 0...100 on load.
    static constexpr SettingKey<std::int64_t> levelKey { "monitor.fan.level", 50 };
    static constexpr SettingKey<bool> resumeAfterWakeKey { "monitor.fan.resumeAfterWake", true };
    // As encodeCurves() writes them; by default one curve over the hottest SoC sensor from 20 % at 40 °C to
    // 100 % at 80 °C. A function, as its default is built at run time.
    static const SettingKey<nlohmann::json>& curveKey();
    // The helper version last registered; none yet by default.
    static constexpr SettingKey<std::string_view> helperVersionKey { "monitor.fan.helperVersion", "" };

    Mode mode = Mode::manual;
    int level = static_cast<int>(levelKey.defaultValue);
    std::vector<FanCurve> curves;

    // "manual" or "curve".
    static std::string_view rawValue(Mode mode);

    // Registers the defaults of the five keys.
    static void registerDefaults(Settings& settings);

    // Reads the configuration; an unknown mode reads as manual, a level outside 0...100 is clamped, and
    // curves or points that do not decode are left out.
    static FanConfiguration load(const Settings& settings);
    void save(Settings& settings) const;

    // The curves as kept under "monitor.fan.curve":
    // [{"source":"hottestSoC","points":[{"temperature":40,"level":20}, ...]}, ...].
    static nlohmann::json encodeCurves(const std::vector<FanCurve>& curves);
    static std::vector<FanCurve> decodeCurves(const nlohmann::json& json);

    bool operator==(const FanConfiguration&) const = default;
};

} // namespace quillmar
