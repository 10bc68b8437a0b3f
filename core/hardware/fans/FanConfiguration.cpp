#include "core/hardware/fans/FanConfiguration.h"

#include <algorithm>
#include <string>

namespace quillmar {

std::string_view FanConfiguration::rawValue(Mode mode)
{
    return mode == Mode::curve ? "curve" : "manual";
}

const SettingKey<nlohmann::json>& FanConfiguration::curveKey()
{
    static const SettingKey<nlohmann::json> key { "monitor.fan.curve",
        encodeCurves({ FanCurve::make(FanCurveSource::hottestSoC, { FanCurvePoint::make(40, 20), FanCurvePoint::make(80, 100) }) }) };
    return key;
}

void FanConfiguration::registerDefaults(Settings& settings)
{
    settings.registerDefaults(modeKey, levelKey, resumeAfterWakeKey, curveKey(), helperVersionKey);
}

FanConfiguration FanConfiguration::load(const Settings& settings)
{
    FanConfiguration configuration;
    configuration.mode = settings.value(modeKey) == rawValue(Mode::curve) ? Mode::curve : Mode::manual;
    configuration.level = static_cast<int>(std::clamp<std::int64_t>(settings.value(levelKey), 0, 100));
    configuration.curves = decodeCurves(settings.value(curveKey()));
    return configuration;
}

void FanConfiguration::save(Settings& settings) const
{
    settings.set(modeKey, std::string(rawValue(mode)));
    settings.set(levelKey, level);
    settings.set(curveKey(), encodeCurves(curves));
}

nlohmann::json FanConfiguration::encodeCurves(const std::vector<FanCurve>& curves)
{
    auto encoded = nlohmann::json::array();
    for (const auto& curve : curves) {
        auto points = nlohmann::json::array();
        for (const auto& point : curve.points)
            points.push_back({ { "temperature", point.temperature }, { "level", point.level } });
        encoded.push_back({ { "source", std::string(quillmar::rawValue(curve.source)) }, { "points", std::move(points) } });
    }
    return encoded;
}

std::vector<FanCurve> FanConfiguration::decodeCurves(const nlohmann::json& json)
{
    std::vector<FanCurve> curves;
    if (!json.is_array())
        return curves;
    for (const auto& record : json) {
        if (!record.is_object() || !record.contains("source") || !record["source"].is_string())
            continue;
        auto source = fanCurveSourceFromRawValue(record["source"].get_ref<const std::string&>());
        if (!source)
            continue;
        std::vector<FanCurvePoint> points;
        if (record.contains("points") && record["points"].is_array()) {
            for (const auto& point : record["points"]) {
                if (!point.is_object() || !point.contains("temperature") || !point["temperature"].is_number()
                    || !point.contains("level") || !point["level"].is_number_integer())
                    continue;
                auto level = std::clamp<std::int64_t>(point["level"].get<std::int64_t>(), 0, 100);
                points.push_back(FanCurvePoint::make(point["temperature"].get<double>(), static_cast<int>(level)));
            }
        }
        curves.push_back(FanCurve::make(*source, std::move(points)));
    }
    return curves;
}

} // namespace quillmar
