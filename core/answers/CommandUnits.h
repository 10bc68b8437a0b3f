#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/answers/UnitConversion.h"
#include "core/answers/UnitInfo.h"

namespace quillmar {

// Unit conversion typed into the command bar: "5 km in mi", "100 °F to c", "3 cups", "20 Mbps in MB".
class CommandUnits final {
public:
    // The conversion `query` asks for, or nothing. The query is normalised, then split at a connector
    // word ("in", "to", "as", "into", "->", "→", "="; the last one that leaves a quantity before it and a
    // unit after it): the quantity is parsed by `parseQuantity`, the target resolved by `unit`. Without
    // a connector the whole query is the quantity and the default target of its unit is used; a unit
    // without a default target gives no answer. A leading "convert" is ignored. Units of different
    // categories give no answer.
    static std::optional<UnitConversion> convert(std::string_view query);

    // `value` of `from` in `to` (which must be of the same category), through the category's base unit.
    static double convert(double value, const UnitInfo& from, const UnitInfo& to);

    // A unit by name: the exact label first ("MB", "Mb"), then the alternative spellings in lower case
    // ("megabytes", "sq ft"), then a label that matches in lower case ("KM"), then the rate spellings
    // ("Mbps" is megabits). Nothing for an unknown name.
    static std::optional<UnitInfo> unit(std::string_view name);

    // A number (optional sign, digits, at most one decimal point), an optional space and a unit name, as
    // in "5km", "-40 °F", "2.5 fl oz". Nothing when either part is missing or unknown.
    static std::optional<UnitQuantity> parseQuantity(std::string_view text);

    // Trims and collapses whitespace; reads "μ" as "µ", "º" and "˚" as "°", "℃" and "℉" as "°C" and "°F",
    // "^2" and "^3" as "²" and "³"; removes digit-group commas ("1,000" is 1000); puts spaces around
    // "->", "→" and "=" so that they stand as connectors.
    static std::string normalize(std::string_view query);

    // `value` rounded to 10 significant digits (or to a whole number when its integer part has more),
    // which hides the binary noise of a conversion (100 °C is 212 °F, not 211.99999999999997). Zero and
    // non-finite values are returned as they are.
    static double rounded(double value);

    // Plain text that pastes back as a number: "0"; the C "%.10g" form at a magnitude of at least 1e15 or
    // below 1e-9; otherwise up to 10 significant digits (all of the integer part) without grouping
    // ("1609.344").
    static std::string format(double value);
};

} // namespace quillmar
