#pragma once

#include <string>

#include "core/hardware/smc/SMCKeyInfo.h"

namespace quillmar {

// A fan that discovery trusts: its limits in rpm (0 <= minimum < maximum <= 20000), its one-byte mode key
// ("F0Md" or "F0md") and its target key, whose type can hold the maximum.
struct Fan {
    int index = 0;
    double minimum = 0;
    double maximum = 0;
    std::string modeKey;
    std::string targetKey;
    SMCKeyInfo targetInfo;

    // The target for `level` percent (clamped to 0...100), in rpm.
    double target(int level) const;
};

} // namespace quillmar
