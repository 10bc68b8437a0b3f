#include <gtest/gtest.h>

#include <optional>

#include "core/windows/SystemTiling.h"
#include "tests/windows/FakeWindowPorts.h"

namespace quillmar {
namespace {

TEST(SystemTiling, ReadsTheSystemsEdgeTilingPreferences)
{
    struct Row {
        const char* name;
        std::optional<double> spans;
        std::optional<double> edge;
        std::optional<double> top;
        bool expected;
    };
    const Row rows[] = {
        { "AllMissingMeansOn", std::nullopt, std::nullopt, std::nullopt, true },
        { "SpacesSpanningDisplaysMeansOff", 1, 1, 1, false },
        { "SpacesPerDisplayWithEdgeTilingOn", 0, 1, std::nullopt, true },
        { "EdgeTilingOffAndTopMissing", std::nullopt, 0, std::nullopt, true },
        { "EdgeTilingOffAndTopOff", std::nullopt, 0, 0, false },
        { "EdgeTilingOffAndTopOn", 0, 0, 1, true },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        FakeSystemPreferences preferences;
        if (row.spans)
            preferences.set("com.apple.spaces", "spans-displays", *row.spans);
        if (row.edge)
            preferences.set("com.apple.WindowManager", "EnableTilingByEdgeDrag", *row.edge);
        if (row.top)
            preferences.set("com.apple.WindowManager", "EnableTopTilingByEdgeDrag", *row.top);
        EXPECT_EQ(SystemTiling::edgeTilingIsOn(preferences), row.expected);
    }
}

} // namespace
} // namespace quillmar
