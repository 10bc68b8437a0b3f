#include "core/clipboard/ClipColor.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <vector>

#include <fmt/format.h>

#include "core/base/Text.h"

namespace quillmar {

namespace {

struct Number {
    double value = 0.0;
    bool percent = false;
};

std::optional<ClipColor> parseHex(std::string_view digits)
{
    std::vector<int> values;
    for (char character : digits) {
        int value = hexDigitValue(character);
        if (value < 0)
            return std::nullopt;
        values.push_back(value);
    }
    auto channel = [&](std::size_t index, bool shortForm) {
        int value = shortForm ? values[index] * 17 : values[index * 2] * 16 + values[index * 2 + 1];
        return value / 255.0;
    };
    ClipColor color;
    switch (values.size()) {
    case 3:
    case 4: {
        color = { channel(0, true), channel(1, true), channel(2, true), values.size() == 4 ? channel(3, true) : 1.0 };
        return color;
    }
    case 6:
    case 8:
        color = { channel(0, false), channel(1, false), channel(2, false), values.size() == 8 ? channel(3, false) : 1.0 };
        return color;
    default:
        return std::nullopt;
    }
}

// The numbers between the parentheses; an alpha after "/" is appended last. None on anything else.
std::optional<std::vector<Number>> parseArguments(std::string_view text)
{
    std::vector<Number> numbers;
    bool sawSlash = false;
    std::size_t index = 0;
    while (index < text.size()) {
        char character = text[index];
        if (isAsciiSpace(character) || character == ',') {
            ++index;
            continue;
        }
        if (character == '/') {
            if (sawSlash)
                return std::nullopt;
            sawSlash = true;
            ++index;
            continue;
        }
        Number number;
        const char* begin = text.data() + index;
        const char* end = text.data() + text.size();
        if (*begin == '+')
            ++begin;
        auto [next, error] = std::from_chars(begin, end, number.value);
        if (error != std::errc() || !std::isfinite(number.value))
            return std::nullopt;
        index = static_cast<std::size_t>(next - text.data());
        if (index < text.size() && text[index] == '%') {
            number.percent = true;
            ++index;
        } else if (text.substr(index, 3) == "deg") {
            index += 3;
        }
        numbers.push_back(number);
    }
    if (sawSlash && numbers.size() != 4)
        return std::nullopt;
    return numbers;
}

std::optional<double> alphaOf(const std::vector<Number>& numbers)
{
    if (numbers.size() < 4)
        return 1.0;
    double alpha = numbers[3].percent ? numbers[3].value / 100.0 : numbers[3].value;
    if (alpha < 0.0 || alpha > 1.0)
        return std::nullopt;
    return alpha;
}

std::optional<ClipColor> fromRgb(const std::vector<Number>& numbers)
{
    ClipColor color;
    double* channels[] = { &color.red, &color.green, &color.blue };
    for (std::size_t index = 0; index < 3; ++index) {
        double value = numbers[index].percent ? numbers[index].value / 100.0 : numbers[index].value / 255.0;
        if (value < 0.0 || value > 1.0)
            return std::nullopt;
        *channels[index] = value;
    }
    auto alpha = alphaOf(numbers);
    if (!alpha)
        return std::nullopt;
    color.alpha = *alpha;
    return color;
}

std::optional<ClipColor> fromHsl(const std::vector<Number>& numbers)
{
    if (numbers[0].percent || !numbers[1].percent || !numbers[2].percent)
        return std::nullopt;
    double saturation = numbers[1].value / 100.0;
    double lightness = numbers[2].value / 100.0;
    if (saturation < 0.0 || saturation > 1.0 || lightness < 0.0 || lightness > 1.0)
        return std::nullopt;
    double hue = std::fmod(numbers[0].value, 360.0);
    if (hue < 0.0)
        hue += 360.0;
    double chroma = (1.0 - std::fabs(2.0 * lightness - 1.0)) * saturation;
    double second = chroma * (1.0 - std::fabs(std::fmod(hue / 60.0, 2.0) - 1.0));
    double match = lightness - chroma / 2.0;
    double red = 0.0, green = 0.0, blue = 0.0;
    switch (static_cast<int>(hue / 60.0)) {
    case 0: red = chroma; green = second; break;
    case 1: red = second; green = chroma; break;
    case 2: green = chroma; blue = second; break;
    case 3: green = second; blue = chroma; break;
    case 4: red = second; blue = chroma; break;
    default: red = chroma; blue = second; break;
    }
    auto alpha = alphaOf(numbers);
    if (!alpha)
        return std::nullopt;
    return ClipColor { red + match, green + match, blue + match, *alpha };
}

} // namespace

std::string ClipColor::hex() const
{
    auto byte = [](double component) { return static_cast<int>(std::lround(std::clamp(component, 0.0, 1.0) * 255.0)); };
    if (byte(alpha) == 255)
        return fmt::format("#{:02X}{:02X}{:02X}", byte(red), byte(green), byte(blue));
    return fmt::format("#{:02X}{:02X}{:02X}{:02X}", byte(red), byte(green), byte(blue), byte(alpha));
}

std::optional<ClipColor> ClipColor::parse(std::string_view text)
{
    text = trimmed(text);
    if (text.size() > 64)
        return std::nullopt;
    if (!text.empty() && text.front() == '#')
        return parseHex(text.substr(1));

    for (std::string_view name : { "rgba", "rgb", "hsla", "hsl" }) {
        if (!startsWithIgnoringAsciiCase(text, name))
            continue;
        auto rest = trimmed(text.substr(name.size()));
        if (rest.size() < 2 || rest.front() != '(' || rest.back() != ')')
            return std::nullopt;
        auto numbers = parseArguments(rest.substr(1, rest.size() - 2));
        if (!numbers || numbers->size() < 3 || numbers->size() > 4)
            return std::nullopt;
        return name[0] == 'r' ? fromRgb(*numbers) : fromHsl(*numbers);
    }
    return std::nullopt;
}

} // namespace quillmar
