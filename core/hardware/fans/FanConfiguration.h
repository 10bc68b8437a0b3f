#pragma once

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

    static constexpr std::string_view modeKey = "monitor.fan.mode";
    static constexpr std::string_view levelKey = "monitor.fan.level";
    static constexpr std::string_view resumeAfterWakeKey = "monitor.fan.resumeAfterWake";
    static constexpr std::string_view curveKey = "monitor.fan.curve";
    static constexpr std::string_view helperVersionKey = "monitor.fan.helperVersion";

    Mode mode = Mode::manual;
    int level = 50;
    std::vector<FanCurve> curves;

    // "manual" or "curve".
    static std::string_view rawValue(Mode mode);

    // The defaults of the five keys: manual at 50 %, resume after wake on, one curve over the hottest SoC
    // sensor from 20 % at 40 °C to 100 % at 80 °C, no helper version.
    static nlohmann::json defaults();

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
