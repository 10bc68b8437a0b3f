#include "core/answers/UnitCategory.h"

namespace quillmar {

namespace {

struct CategoryText {
    std::string_view rawValue;
    std::string_view title;
    std::string_view symbol;
};

constexpr std::array<CategoryText, allUnitCategories.size()> texts { {
    { "length", "Length", "ruler" },
    { "mass", "Mass", "scalemass" },
    { "temperature", "Temperature", "thermometer.medium" },
    { "volume", "Volume", "drop" },
    { "area", "Area", "square.dashed" },
    { "speed", "Speed", "speedometer" },
    { "duration", "Duration", "clock" },
    { "data", "Data", "externaldrive" },
    { "energy", "Energy", "bolt" },
    { "pressure", "Pressure", "gauge.with.dots.needle.33percent" },
    { "angle", "Angle", "angle" },
    { "frequency", "Frequency", "waveform" },
    { "power", "Power", "powerplug" },
} };

const CategoryText& textOf(UnitCategory category)
{
    return texts[static_cast<std::size_t>(category)];
}

} // namespace

std::string_view rawValue(UnitCategory category)
{
    return textOf(category).rawValue;
}

std::string_view title(UnitCategory category)
{
    return textOf(category).title;
}

std::string_view symbol(UnitCategory category)
{
    return textOf(category).symbol;
}

} // namespace quillmar
