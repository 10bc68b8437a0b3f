#pragma once

#include <optional>

namespace quillmar {

// One fan's speeds as the SMC reports them, in rpm; a value the SMC did not give is none.
struct FanReading {
    int index = 0;
    std::optional<double> actual;
    std::optional<double> minimum;
    std::optional<double> maximum;
    std::optional<double> target;

    bool operator==(const FanReading&) const = default;
};

} // namespace quillmar
