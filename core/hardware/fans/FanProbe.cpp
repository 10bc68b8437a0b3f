#include "core/hardware/fans/FanProbe.h"

#include <cmath>

namespace quillmar {

std::optional<int> FanProbe::fanCount()
{
    auto count = m_smc.readValue("FNum");
    if (!count || *count != std::floor(*count) || *count < 1 || *count > maximumFanCount)
        return std::nullopt;
    return static_cast<int>(*count);
}

std::vector<FanReading> FanProbe::read(int count)
{
    std::vector<FanReading> readings;
    for (int fan = 0; fan < count; ++fan) {
        readings.push_back(FanReading {
            fan,
            m_smc.readValue(key(fan, "Ac")),
            m_smc.readValue(key(fan, "Mn")),
            m_smc.readValue(key(fan, "Mx")),
            m_smc.readValue(key(fan, "Tg")),
        });
    }
    return readings;
}

std::optional<std::string> FanProbe::modeKey(int fan)
{
    for (auto suffix : { "Md", "md" }) {
        auto candidate = key(fan, suffix);
        if (m_smc.info(candidate))
            return candidate;
    }
    return std::nullopt;
}

std::string FanProbe::key(int fan, std::string_view suffix)
{
    return "F" + std::to_string(fan) + std::string(suffix);
}

} // namespace quillmar
