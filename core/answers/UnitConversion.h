#pragma once

#include <string>

#include "core/answers/UnitInfo.h"

namespace quillmar {

// A value of one unit.
struct UnitQuantity {
    double value = 0;
    UnitInfo unit;

    // "3.106855961 mi", "212 °F", "90°": the value as `CommandUnits::format` writes it, then the label.
    std::string text() const;

    bool operator==(const UnitQuantity&) const = default;
};

// A conversion's answer: the quantity asked about and the converted one (its value already rounded for
// display).
struct UnitConversion {
    UnitQuantity from;
    UnitQuantity to;

    // What the command bar shows: the converted quantity's text.
    std::string text() const { return to.text(); }

    bool operator==(const UnitConversion&) const = default;
};

} // namespace quillmar
