#include "core/answers/UnitTable.h"

#include <array>
#include <numbers>
#include <string>
#include <unordered_map>

namespace quillmar {

namespace {

using C = UnitCategory;

// Exact definitions: the international yard and pound (1959), standard gravity, the US liquid gallon
// (231 cubic inches), the conventional millimetre of mercury, the Julian year.
constexpr long double inch = 0.0254L;
constexpr long double foot = 0.3048L;
constexpr long double mile = 1609.344L;
constexpr long double pound = 0.45359237L;
constexpr long double poundForce = pound * 9.80665L;
constexpr long double gallon = 3.785411784L; // litres
constexpr long double fluidOunce = gallon / 128;
constexpr long double millimetreOfMercury = 133.322387415L;
constexpr long double julianYear = 31557600.0L;
constexpr long double lightSpeed = 299792458.0L;

constexpr auto unitRows = std::to_array<UnitInfo>({
    // Length, in metres.
    { "mm", C::length, 1e-3L, 0, "millimeters" },
    { "cm", C::length, 1e-2L, 0, "centimeters" },
    { "m", C::length, 1, 0, "meters" },
    { "km", C::length, 1e3L, 0, "kilometers" },
    { "µm", C::length, 1e-6L, 0, "micrometers" },
    { "nm", C::length, 1e-9L, 0, "nanometers" },
    { "in", C::length, inch, 0, "inches" },
    { "ft", C::length, foot, 0, "feet" },
    { "yd", C::length, 3 * foot, 0, "yards" },
    { "mi", C::length, mile, 0, "miles" },
    { "nmi", C::length, 1852, 0, "nautical miles" },
    { "ly", C::length, lightSpeed * julianYear, 0, "light years" },
    { "au", C::length, 149597870700.0L, 0, "astronomical units" },
    // Mass, in kilograms.
    { "mg", C::mass, 1e-6L, 0, "milligrams" },
    { "g", C::mass, 1e-3L, 0, "grams" },
    { "kg", C::mass, 1, 0, "kilograms" },
    { "t", C::mass, 1e3L, 0, "metric tons" },
    { "oz", C::mass, pound / 16, 0, "ounces" },
    { "lb", C::mass, pound, 0, "pounds" },
    { "st", C::mass, 14 * pound, 0, "stones" },
    { "ct", C::mass, 2e-4L, 0, "carats" },
    // Temperature, in kelvin.
    { "°C", C::temperature, 1, 273.15L, "degrees Celsius" },
    { "°F", C::temperature, 5.0L / 9, 459.67L * 5 / 9, "degrees Fahrenheit" },
    { "K", C::temperature, 1, 0, "kelvin" },
    // Volume, in litres.
    { "ml", C::volume, 1e-3L, 0, "milliliters" },
    { "cl", C::volume, 1e-2L, 0, "centiliters" },
    { "dl", C::volume, 1e-1L, 0, "deciliters" },
    { "l", C::volume, 1, 0, "liters" },
    { "m³", C::volume, 1e3L, 0, "cubic meters" },
    { "ft³", C::volume, foot * foot * foot * 1000, 0, "cubic feet" },
    { "gal", C::volume, gallon, 0, "gallons (US)" },
    { "qt", C::volume, gallon / 4, 0, "quarts (US)" },
    { "pt", C::volume, gallon / 8, 0, "pints (US)" },
    { "cup", C::volume, gallon / 16, 0, "cups (US)" },
    { "fl oz", C::volume, fluidOunce, 0, "fluid ounces (US)" },
    { "tbsp", C::volume, fluidOunce / 2, 0, "tablespoons (US)" },
    { "tsp", C::volume, fluidOunce / 6, 0, "teaspoons (US)" },
    // Area, in square metres.
    { "m²", C::area, 1, 0, "square meters" },
    { "km²", C::area, 1e6L, 0, "square kilometers" },
    { "cm²", C::area, 1e-4L, 0, "square centimeters" },
    { "ft²", C::area, foot * foot, 0, "square feet" },
    { "in²", C::area, inch * inch, 0, "square inches" },
    { "mi²", C::area, mile * mile, 0, "square miles" },
    { "ac", C::area, 43560 * foot * foot, 0, "acres" },
    { "ha", C::area, 1e4L, 0, "hectares" },
    // Speed, in metres per second.
    { "km/h", C::speed, 1000.0L / 3600, 0, "kilometers per hour" },
    { "mph", C::speed, mile / 3600, 0, "miles per hour" },
    { "m/s", C::speed, 1, 0, "meters per second" },
    { "kn", C::speed, 1852.0L / 3600, 0, "knots" },
    // Duration, in seconds.
    { "ms", C::duration, 1e-3L, 0, "milliseconds" },
    { "s", C::duration, 1, 0, "seconds" },
    { "min", C::duration, 60, 0, "minutes" },
    { "h", C::duration, 3600, 0, "hours" },
    { "days", C::duration, 86400, 0, "days" },
    { "weeks", C::duration, 604800, 0, "weeks" },
    { "years", C::duration, julianYear, 0, "years (365.25 days)" },
    // Data, in bits: decimal units are powers of 1000, binary ones powers of 1024.
    { "bytes", C::data, 8, 0, "bytes" },
    { "bits", C::data, 1, 0, "bits" },
    { "KB", C::data, 8e3L, 0, "kilobytes" },
    { "MB", C::data, 8e6L, 0, "megabytes" },
    { "GB", C::data, 8e9L, 0, "gigabytes" },
    { "TB", C::data, 8e12L, 0, "terabytes" },
    { "PB", C::data, 8e15L, 0, "petabytes" },
    { "KiB", C::data, 8.0L * 1024, 0, "kibibytes" },
    { "MiB", C::data, 8.0L * 1024 * 1024, 0, "mebibytes" },
    { "GiB", C::data, 8.0L * 1024 * 1024 * 1024, 0, "gibibytes" },
    { "TiB", C::data, 8.0L * 1024 * 1024 * 1024 * 1024, 0, "tebibytes" },
    { "Kb", C::data, 1e3L, 0, "kilobits" },
    { "Mb", C::data, 1e6L, 0, "megabits" },
    { "Gb", C::data, 1e9L, 0, "gigabits" },
    // Energy, in joules.
    { "J", C::energy, 1, 0, "joules" },
    { "kJ", C::energy, 1e3L, 0, "kilojoules" },
    { "cal", C::energy, 4.184L, 0, "calories (thermochemical)" },
    { "kcal", C::energy, 4184, 0, "kilocalories (thermochemical)" },
    { "kWh", C::energy, 3.6e6L, 0, "kilowatt hours" },
    // Pressure, in pascals.
    { "Pa", C::pressure, 1, 0, "pascals" },
    { "hPa", C::pressure, 1e2L, 0, "hectopascals" },
    { "kPa", C::pressure, 1e3L, 0, "kilopascals" },
    { "bar", C::pressure, 1e5L, 0, "bars" },
    { "mbar", C::pressure, 1e2L, 0, "millibars" },
    { "psi", C::pressure, poundForce / (inch * inch), 0, "pounds-force per square inch" },
    { "atm", C::pressure, 101325, 0, "standard atmospheres" },
    { "mmHg", C::pressure, millimetreOfMercury, 0, "millimeters of mercury" },
    { "inHg", C::pressure, millimetreOfMercury * 25.4L, 0, "inches of mercury" },
    // Angle, in degrees.
    { "°", C::angle, 1, 0, "degrees" },
    { "rad", C::angle, 180 / std::numbers::pi_v<long double>, 0, "radians" },
    { "grad", C::angle, 0.9L, 0, "gradians" },
    { "turns", C::angle, 360, 0, "turns" },
    // Frequency, in hertz.
    { "Hz", C::frequency, 1, 0, "hertz" },
    { "kHz", C::frequency, 1e3L, 0, "kilohertz" },
    { "MHz", C::frequency, 1e6L, 0, "megahertz" },
    { "GHz", C::frequency, 1e9L, 0, "gigahertz" },
    // Power, in watts; mechanical horsepower is 550 foot-pounds-force per second.
    { "W", C::power, 1, 0, "watts" },
    { "kW", C::power, 1e3L, 0, "kilowatts" },
    { "hp", C::power, 550 * foot * poundForce, 0, "horsepower (mechanical)" },
});

constexpr auto aliasRows = std::to_array<UnitNamePair>({
    // Length
    { "millimeter", "mm" }, { "millimeters", "mm" }, { "millimetre", "mm" }, { "millimetres", "mm" },
    { "centimeter", "cm" }, { "centimeters", "cm" }, { "centimetre", "cm" }, { "centimetres", "cm" },
    { "meter", "m" }, { "meters", "m" }, { "metre", "m" }, { "metres", "m" },
    { "kilometer", "km" }, { "kilometers", "km" }, { "kilometre", "km" }, { "kilometres", "km" }, { "kms", "km" },
    { "um", "µm" }, { "micron", "µm" }, { "microns", "µm" }, { "micrometer", "µm" }, { "micrometers", "µm" },
    { "micrometre", "µm" }, { "micrometres", "µm" },
    { "nanometer", "nm" }, { "nanometers", "nm" }, { "nanometre", "nm" }, { "nanometres", "nm" },
    { "inch", "in" }, { "inches", "in" }, { "\"", "in" },
    { "foot", "ft" }, { "feet", "ft" }, { "'", "ft" },
    { "yard", "yd" }, { "yards", "yd" }, { "yds", "yd" },
    { "mile", "mi" }, { "miles", "mi" },
    { "nautical mile", "nmi" }, { "nautical miles", "nmi" },
    { "light year", "ly" }, { "light years", "ly" }, { "lightyear", "ly" }, { "lightyears", "ly" },
    { "astronomical unit", "au" }, { "astronomical units", "au" },
    // Mass
    { "milligram", "mg" }, { "milligrams", "mg" },
    { "gram", "g" }, { "grams", "g" }, { "gramme", "g" }, { "grammes", "g" },
    { "kilogram", "kg" }, { "kilograms", "kg" }, { "kilo", "kg" }, { "kilos", "kg" }, { "kgs", "kg" },
    { "tonne", "t" }, { "tonnes", "t" }, { "metric ton", "t" }, { "metric tons", "t" },
    { "ounce", "oz" }, { "ounces", "oz" },
    { "pound", "lb" }, { "pounds", "lb" }, { "lbs", "lb" },
    { "stone", "st" }, { "stones", "st" },
    { "carat", "ct" }, { "carats", "ct" },
    // Temperature
    { "c", "°C" }, { "°c", "°C" }, { "degc", "°C" }, { "celsius", "°C" }, { "degrees celsius", "°C" },
    { "f", "°F" }, { "°f", "°F" }, { "degf", "°F" }, { "fahrenheit", "°F" }, { "degrees fahrenheit", "°F" },
    { "k", "K" }, { "kelvin", "K" }, { "kelvins", "K" },
    // Volume
    { "milliliter", "ml" }, { "milliliters", "ml" }, { "millilitre", "ml" }, { "millilitres", "ml" },
    { "centiliter", "cl" }, { "centiliters", "cl" }, { "centilitre", "cl" }, { "centilitres", "cl" },
    { "deciliter", "dl" }, { "deciliters", "dl" }, { "decilitre", "dl" }, { "decilitres", "dl" },
    { "liter", "l" }, { "liters", "l" }, { "litre", "l" }, { "litres", "l" },
    { "m3", "m³" }, { "cubic meter", "m³" }, { "cubic meters", "m³" }, { "cubic metre", "m³" }, { "cubic metres", "m³" },
    { "ft3", "ft³" }, { "cu ft", "ft³" }, { "cubic foot", "ft³" }, { "cubic feet", "ft³" },
    { "gallon", "gal" }, { "gallons", "gal" },
    { "quart", "qt" }, { "quarts", "qt" },
    { "pint", "pt" }, { "pints", "pt" },
    { "cups", "cup" },
    { "floz", "fl oz" }, { "fl. oz", "fl oz" }, { "fluid ounce", "fl oz" }, { "fluid ounces", "fl oz" },
    { "tbs", "tbsp" }, { "tablespoon", "tbsp" }, { "tablespoons", "tbsp" },
    { "teaspoon", "tsp" }, { "teaspoons", "tsp" },
    // Area
    { "m2", "m²" }, { "sq m", "m²" }, { "sqm", "m²" }, { "square meter", "m²" }, { "square meters", "m²" },
    { "square metre", "m²" }, { "square metres", "m²" },
    { "km2", "km²" }, { "sq km", "km²" }, { "square kilometer", "km²" }, { "square kilometers", "km²" },
    { "cm2", "cm²" }, { "sq cm", "cm²" }, { "square centimeter", "cm²" }, { "square centimeters", "cm²" },
    { "ft2", "ft²" }, { "sq ft", "ft²" }, { "sqft", "ft²" }, { "square foot", "ft²" }, { "square feet", "ft²" },
    { "in2", "in²" }, { "sq in", "in²" }, { "square inch", "in²" }, { "square inches", "in²" },
    { "mi2", "mi²" }, { "sq mi", "mi²" }, { "square mile", "mi²" }, { "square miles", "mi²" },
    { "acre", "ac" }, { "acres", "ac" },
    { "hectare", "ha" }, { "hectares", "ha" },
    // Speed
    { "kph", "km/h" }, { "kmh", "km/h" }, { "kmph", "km/h" }, { "km/hr", "km/h" }, { "kilometers per hour", "km/h" },
    { "mi/h", "mph" }, { "miles per hour", "mph" },
    { "meters per second", "m/s" },
    { "knot", "kn" }, { "knots", "kn" }, { "kt", "kn" }, { "kts", "kn" },
    // Duration
    { "msec", "ms" }, { "millisecond", "ms" }, { "milliseconds", "ms" },
    { "sec", "s" }, { "secs", "s" }, { "second", "s" }, { "seconds", "s" },
    { "mins", "min" }, { "minute", "min" }, { "minutes", "min" },
    { "hr", "h" }, { "hrs", "h" }, { "hour", "h" }, { "hours", "h" },
    { "d", "days" }, { "day", "days" },
    { "wk", "weeks" }, { "wks", "weeks" }, { "week", "weeks" },
    { "yr", "years" }, { "yrs", "years" }, { "year", "years" },
    // Data
    { "b", "bytes" }, { "byte", "bytes" }, { "bit", "bits" },
    { "kb", "KB" }, { "kilobyte", "KB" }, { "kilobytes", "KB" },
    { "mb", "MB" }, { "megabyte", "MB" }, { "megabytes", "MB" },
    { "gb", "GB" }, { "gigabyte", "GB" }, { "gigabytes", "GB" },
    { "tb", "TB" }, { "terabyte", "TB" }, { "terabytes", "TB" },
    { "pb", "PB" }, { "petabyte", "PB" }, { "petabytes", "PB" },
    { "kib", "KiB" }, { "mib", "MiB" }, { "gib", "GiB" }, { "tib", "TiB" },
    { "kilobit", "Kb" }, { "kilobits", "Kb" }, { "megabit", "Mb" }, { "megabits", "Mb" },
    { "gigabit", "Gb" }, { "gigabits", "Gb" },
    // Energy
    { "j", "J" }, { "joule", "J" }, { "joules", "J" },
    { "kj", "kJ" }, { "kilojoule", "kJ" }, { "kilojoules", "kJ" },
    { "calorie", "cal" }, { "calories", "cal" },
    { "kilocalorie", "kcal" }, { "kilocalories", "kcal" },
    { "kwh", "kWh" },
    // Pressure
    { "pa", "Pa" }, { "pascal", "Pa" }, { "pascals", "Pa" },
    { "hpa", "hPa" }, { "kpa", "kPa" }, { "bars", "bar" }, { "millibar", "mbar" }, { "millibars", "mbar" },
    { "atmosphere", "atm" }, { "atmospheres", "atm" },
    { "mmhg", "mmHg" }, { "inhg", "inHg" },
    // Angle
    { "deg", "°" }, { "degree", "°" }, { "degrees", "°" },
    { "radian", "rad" }, { "radians", "rad" },
    { "gradian", "grad" }, { "gradians", "grad" }, { "gon", "grad" },
    { "turn", "turns" }, { "rev", "turns" }, { "revolution", "turns" }, { "revolutions", "turns" },
    // Frequency and power
    { "hz", "Hz" }, { "hertz", "Hz" }, { "khz", "kHz" }, { "mhz", "MHz" }, { "ghz", "GHz" },
    { "w", "W" }, { "watt", "W" }, { "watts", "W" },
    { "kw", "kW" }, { "kilowatt", "kW" }, { "kilowatts", "kW" },
    { "horsepower", "hp" },
});

constexpr auto bitAliasRows = std::to_array<UnitNamePair>({
    { "kbps", "Kb" }, { "mbps", "Mb" }, { "gbps", "Gb" },
});

constexpr std::array<std::string_view, 7> connectorWords { "in", "to", "as", "into", "->", "→", "=" };

constexpr auto defaultTargetRows = std::to_array<UnitNamePair>({
    { "mi", "km" }, { "km", "mi" }, { "m", "ft" }, { "ft", "m" }, { "cm", "in" }, { "in", "cm" },
    { "mm", "in" }, { "yd", "m" }, { "nmi", "km" },
    { "kg", "lb" }, { "lb", "kg" }, { "g", "oz" }, { "oz", "g" }, { "st", "kg" },
    { "°F", "°C" }, { "°C", "°F" }, { "K", "°C" },
    { "l", "gal" }, { "gal", "l" }, { "ml", "fl oz" }, { "fl oz", "ml" }, { "cup", "ml" }, { "qt", "l" },
    { "pt", "ml" }, { "tbsp", "ml" }, { "tsp", "ml" },
    { "km/h", "mph" }, { "mph", "km/h" }, { "kn", "km/h" },
    { "m²", "ft²" }, { "ft²", "m²" }, { "ac", "ha" }, { "ha", "ac" },
    { "kcal", "kJ" },
});

static_assert(unitRows.size() == 95);
static_assert(defaultTargetRows.size() == 34);

} // namespace

std::span<const UnitInfo> UnitTable::units()
{
    return unitRows;
}

const UnitInfo* UnitTable::unitByLabel(std::string_view label)
{
    static const auto byLabel = [] {
        std::unordered_map<std::string_view, const UnitInfo*> map;
        for (const auto& unit : unitRows)
            map.emplace(unit.label, &unit);
        return map;
    }();
    auto found = byLabel.find(label);
    return found == byLabel.end() ? nullptr : found->second;
}

std::span<const UnitNamePair> UnitTable::aliases()
{
    return aliasRows;
}

std::span<const UnitNamePair> UnitTable::bitAliases()
{
    return bitAliasRows;
}

std::span<const std::string_view> UnitTable::connectors()
{
    return connectorWords;
}

std::span<const UnitNamePair> UnitTable::defaultTargets()
{
    return defaultTargetRows;
}

} // namespace quillmar
