#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <set>
#include <string>

#include "core/answers/CommandUnits.h"
#include "core/answers/UnitTable.h"

namespace quillmar {
namespace {

std::optional<std::string> answer(std::string_view query)
{
    auto conversion = CommandUnits::convert(query);
    if (!conversion)
        return std::nullopt;
    return conversion->text();
}

struct ConversionRow {
    const char* name;
    const char* query;
    std::optional<std::string> expected;
};

class UnitAnswers : public testing::TestWithParam<ConversionRow> { };

TEST_P(UnitAnswers, Converts)
{
    EXPECT_EQ(answer(GetParam().query), GetParam().expected) << GetParam().query;
}

// Expected values are worked out from the exact definitions by hand, to the digits shown.
INSTANTIATE_TEST_SUITE_P(ExactFactors, UnitAnswers,
    testing::Values(
        ConversionRow { "kilometersToMiles", "5 km in mi", "3.106855961 mi" },
        ConversionRow { "mileIsExact", "1 mi in km", "1.609344 km" },
        ConversionRow { "inchIsExact", "1 in to mm", "25.4 mm" },
        ConversionRow { "footInInches", "3 ft in in", "36 in" },
        ConversionRow { "nauticalMile", "1 nmi in m", "1852 m" },
        ConversionRow { "lightYearInExponentForm", "1 ly in km", "9460730472581 km" },
        ConversionRow { "lightYearInMetres", "1 ly in m", "9.460730473e+15 m" },
        ConversionRow { "poundIsExact", "1 lb in g", "453.59237 g" },
        ConversionRow { "stoneInPounds", "2 st in lb", "28 lb" },
        ConversionRow { "ounceInGrams", "1 oz in g", "28.34952313 g" },
        ConversionRow { "caratInGrams", "5 ct in g", "1 g" },
        ConversionRow { "gallonIsUsLiquid", "1 gal in l", "3.785411784 l" },
        ConversionRow { "cupsInFluidOunces", "2 cups in fl oz", "16 fl oz" },
        ConversionRow { "tablespoonsInTeaspoons", "1 tbsp in tsp", "3 tsp" },
        ConversionRow { "cubicFootInLitres", "1 ft³ in l", "28.31684659 l" },
        ConversionRow { "acreInSquareFeet", "1 ac in ft²", "43560 ft²" },
        ConversionRow { "hectareInAcres", "1 ha in ac", "2.471053815 ac" },
        ConversionRow { "squareMileInSquareKilometres", "1 mi² in km²", "2.58998811 km²" },
        ConversionRow { "milesPerHour", "60 mph in km/h", "96.56064 km/h" },
        ConversionRow { "knots", "10 kn in km/h", "18.52 km/h" },
        ConversionRow { "yearIsJulian", "1 years in days", "365.25 days" },
        ConversionRow { "weekInHours", "1 weeks in h", "168 h" },
        ConversionRow { "kibibyteIsBinary", "1 KiB in bytes", "1024 bytes" },
        ConversionRow { "gigabyteIsDecimal", "1 GB in MB", "1000 MB" },
        ConversionRow { "gibibyteInGigabytes", "1 GiB in GB", "1.073741824 GB" },
        ConversionRow { "rateSpellingIsBits", "100 Mbps in MB", "12.5 MB" },
        ConversionRow { "kilowattHour", "1 kWh in kJ", "3600 kJ" },
        ConversionRow { "caloriesAreThermochemical", "1 kcal in J", "4184 J" },
        ConversionRow { "psiInKilopascals", "1 psi in kPa", "6.894757293 kPa" },
        ConversionRow { "atmosphereInMillibars", "1 atm in mbar", "1013.25 mbar" },
        ConversionRow { "inchOfMercury", "1 inHg in mmHg", "25.4 mmHg" },
        ConversionRow { "horsepowerIsMechanical", "1 hp in W", "745.6998716 W" },
        ConversionRow { "radianInDegrees", "1 rad in °", "57.29577951°" },
        ConversionRow { "turnInGradians", "1 turns in grad", "400 grad" },
        ConversionRow { "frequency", "2.4 GHz in MHz", "2400 MHz" }),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(Temperatures, UnitAnswers,
    testing::Values(
        ConversionRow { "boilingPoint", "100 °C in °F", "212 °F" },
        ConversionRow { "minusFortyMeets", "-40 °F in °C", "-40 °C" },
        ConversionRow { "bodyTemperature", "98.6 f to c", "37 °C" },
        ConversionRow { "absoluteZero", "0 K in °F", "-459.67 °F" },
        ConversionRow { "freezingInKelvin", "32 fahrenheit in kelvin", "273.15 K" },
        ConversionRow { "roomTemperature", "20°C", "68 °F" }),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(QueryForms, UnitAnswers,
    testing::Values(
        ConversionRow { "noSpaceBeforeTheUnit", "5km in mi", "3.106855961 mi" },
        ConversionRow { "toConnector", "5 km to miles", "3.106855961 mi" },
        ConversionRow { "asConnector", "2 kg as lb", "4.409245244 lb" },
        ConversionRow { "intoConnector", "1 l into ml", "1000 ml" },
        ConversionRow { "arrowWithoutSpaces", "1km->m", "1000 m" },
        ConversionRow { "equalsSign", "1 m = cm", "100 cm" },
        ConversionRow { "inchesInInches", "12 in in ft", "1 ft" },
        ConversionRow { "spelledOutNames", "3 square feet in square inches", "432 in²" },
        ConversionRow { "twoWordUnit", "8 fl oz in ml", "236.5882365 ml" },
        ConversionRow { "caretPowers", "1 m^2 in cm^2", "10000 cm²" },
        ConversionRow { "upperCaseLabel", "5 KM in MI", "3.106855961 mi" },
        ConversionRow { "leadingConvert", "convert 1 ft to in", "12 in" },
        ConversionRow { "megabytesAreNotMegabits", "1 MB in Mb", "8 Mb" },
        ConversionRow { "defaultTargetForMiles", "10 mi", "16.09344 km" },
        ConversionRow { "defaultTargetForPounds", "1 lb", "0.45359237 kg" },
        ConversionRow { "defaultTargetForCups", "1 cup", "236.5882365 ml" },
        ConversionRow { "noDefaultTargetForMinutes", "5 min", std::nullopt },
        ConversionRow { "categoriesDiffer", "5 kg in km", std::nullopt },
        ConversionRow { "temperatureIsNotAngle", "5 °C in °", std::nullopt },
        ConversionRow { "unknownTarget", "5 km in furlongs", std::nullopt },
        ConversionRow { "unknownUnit", "5 parsecs", std::nullopt },
        ConversionRow { "noNumber", "km in mi", std::nullopt },
        ConversionRow { "plainWords", "open safari", std::nullopt },
        ConversionRow { "bareNumber", "42", std::nullopt }),
    [](const auto& row) { return std::string(row.param.name); });

TEST(CommandUnits, EveryUnitHasItsOwnLabelANameAndAPositiveScale)
{
    std::set<std::string_view> labels;
    for (const auto& unit : UnitTable::units()) {
        EXPECT_TRUE(labels.insert(unit.label).second) << unit.label;
        EXPECT_GT(unit.scale, 0) << unit.label;
        EXPECT_FALSE(unit.displayName.empty()) << unit.label;
    }
}

TEST(CommandUnits, UnitsWithSeveralDefinitionsSayWhichInTheirName)
{
    for (const char* label : { "gal", "qt", "pt", "cup", "fl oz", "tbsp", "tsp" }) {
        auto unit = CommandUnits::unit(label);
        ASSERT_TRUE(unit) << label;
        EXPECT_NE(unit->displayName.find("(US)"), std::string_view::npos) << label;
    }
}

TEST(CommandUnits, EverySpellingAndDefaultTargetLeadsToAUnitOfTheTable)
{
    for (const auto& alias : UnitTable::aliases())
        EXPECT_TRUE(UnitTable::unitByLabel(alias.to)) << alias.from;
    for (const auto& alias : UnitTable::bitAliases())
        EXPECT_TRUE(UnitTable::unitByLabel(alias.to)) << alias.from;
    for (const auto& row : UnitTable::defaultTargets()) {
        const auto* from = UnitTable::unitByLabel(row.from);
        const auto* to = UnitTable::unitByLabel(row.to);
        ASSERT_TRUE(from && to) << row.from << " → " << row.to;
        EXPECT_EQ(from->category, to->category) << row.from;
    }
    auto connectors = UnitTable::connectors();
    for (const char* word : { "in", "to", "as" })
        EXPECT_NE(std::find(connectors.begin(), connectors.end(), word), connectors.end()) << word;
}

TEST(CommandUnits, UnitNamesResolveLabelThenAliasThenLowerCaseLabelThenRate)
{
    struct Row {
        const char* name;
        std::optional<std::string_view> label;
    };
    for (const auto& row : { Row { "MB", "MB" }, Row { "Mb", "Mb" }, Row { "mb", "MB" }, Row { "mB", "MB" },
             Row { "megabits", "Mb" }, Row { "Mbps", "Mb" }, Row { "KBPS", "Kb" }, Row { "K", "K" },
             Row { "k", "K" }, Row { "L", "l" }, Row { "MBAR", "mbar" }, Row { "µm", "µm" }, Row { "sq ft", "ft²" },
             Row { "furlong", std::nullopt }, Row { "", std::nullopt } }) {
        auto unit = CommandUnits::unit(row.name);
        EXPECT_EQ(unit ? std::optional(unit->label) : std::nullopt, row.label) << row.name;
    }
}

TEST(CommandUnits, ConversionKeepsTheAskedQuantity)
{
    auto conversion = CommandUnits::convert("5 km in mi");
    ASSERT_TRUE(conversion);
    EXPECT_EQ(conversion->from.value, 5);
    EXPECT_EQ(conversion->from.unit.label, "km");
    EXPECT_EQ(conversion->to.value, 3.106855961);
    EXPECT_EQ(conversion->to.unit.label, "mi");
    EXPECT_EQ(conversion, CommandUnits::convert("5km to mi"));
}

TEST(CommandUnits, ParseQuantity)
{
    auto quantity = CommandUnits::parseQuantity("-2.5 fl oz");
    ASSERT_TRUE(quantity);
    EXPECT_EQ(quantity->value, -2.5);
    EXPECT_EQ(quantity->unit.label, "fl oz");
    EXPECT_EQ(CommandUnits::parseQuantity("+.5km").value().value, 0.5);
    for (const char* text : { "km", "5", "5 ", "- km", "5 furlongs", "1e3 m", "5  km" })
        EXPECT_FALSE(CommandUnits::parseQuantity(text)) << text;
}

TEST(CommandUnits, Normalize)
{
    EXPECT_EQ(CommandUnits::normalize("  1,000,000   μm\tin m "), "1000000 µm in m");
    EXPECT_EQ(CommandUnits::normalize("5ºC->℉"), "5°C -> °F");
    EXPECT_EQ(CommandUnits::normalize("2 m^3=l"), "2 m³ = l");
    EXPECT_EQ(CommandUnits::normalize("1,5 m and 1,2345"), "1,5 m and 1,2345");
}

TEST(CommandUnits, RoundedKeepsTenSignificantDigits)
{
    EXPECT_EQ(CommandUnits::rounded(211.99999999999997), 212);
    EXPECT_EQ(CommandUnits::rounded(3.10685596118667), 3.106855961);
    EXPECT_EQ(CommandUnits::rounded(-0.000123456789012), -0.0001234567890);
    EXPECT_EQ(CommandUnits::rounded(0), 0);
    EXPECT_EQ(CommandUnits::rounded(123456789012.75), 123456789013) << "the integer part is kept whole";
    EXPECT_EQ(CommandUnits::format(1609.344), "1609.344");
    EXPECT_EQ(CommandUnits::format(1e15), "1e+15");
    EXPECT_EQ(CommandUnits::format(0.0000123), "0.0000123");
}

} // namespace
} // namespace quillmar
