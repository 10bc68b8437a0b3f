#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "core/hardware/fans/FanConfiguration.h"

// Saved fan curves come back from the settings file: any JSON must decode without throwing, and every curve
// that decodes gives a level within 0...100 at any temperature.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view text(reinterpret_cast<const char*>(data), size);
    auto json = nlohmann::json::parse(text, /*callback=*/nullptr, /*allow_exceptions=*/false);
    if (json.is_discarded())
        return 0;
    for (const auto& curve : quillmar::FanConfiguration::decodeCurves(json)) {
        for (double temperature : { -40.0, 20.0, 55.5, 110.0, 400.0 }) {
            int level = curve.level(temperature);
            if (level < 0 || level > 100)
                std::abort();
        }
    }
    return 0;
}
