#pragma once

#include <string_view>

#include "core/answers/UnitCategory.h"

namespace quillmar {

// One unit of the converter's table. A value v of this unit is v × `scale` + `offset` of its category's
// base unit (metre, kilogram, kelvin, litre, square metre, metre per second, second, bit, joule, pascal,
// degree, hertz, watt); only temperatures have an offset.
struct UnitInfo {
    std::string_view label; // the short name as typed and shown: "km", "fl oz", "°C"
    UnitCategory category = UnitCategory::length;
    long double scale = 1;
    long double offset = 0;
    std::string_view displayName; // "kilometers", "gallons (US)"

    long double toBase(long double value) const { return value * scale + offset; }
    long double fromBase(long double base) const { return (base - offset) / scale; }

    bool operator==(const UnitInfo&) const = default;
};

} // namespace quillmar
