#include "core/answers/CommandUnits.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <vector>

#include "core/answers/NumberText.h"
#include "core/answers/UnitTable.h"
#include "core/base/Text.h"

namespace quillmar {

namespace {

constexpr int shownDigits = 10;

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

bool isSpace(char character)
{
    return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

const UnitInfo* lookUp(std::span<const UnitNamePair> pairs, std::string_view name)
{
    for (const auto& pair : pairs) {
        if (pair.from == name)
            return UnitTable::unitByLabel(pair.to);
    }
    return nullptr;
}

std::string replaceAll(std::string text, std::string_view from, std::string_view to)
{
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

std::vector<std::string_view> words(std::string_view text)
{
    std::vector<std::string_view> result;
    while (!text.empty()) {
        auto space = text.find(' ');
        result.push_back(text.substr(0, space));
        if (space == std::string_view::npos)
            break;
        text.remove_prefix(space + 1);
    }
    return result;
}

std::string joined(const std::vector<std::string_view>& parts, std::size_t begin, std::size_t end)
{
    std::string text;
    for (std::size_t index = begin; index < end; ++index) {
        if (!text.empty())
            text += ' ';
        text += parts[index];
    }
    return text;
}

bool isConnector(std::string_view word)
{
    auto connectors = UnitTable::connectors();
    return std::find(connectors.begin(), connectors.end(), asciiLower(word)) != connectors.end();
}

std::optional<UnitConversion> conversion(const UnitQuantity& from, const UnitInfo& to)
{
    if (from.unit.category != to.category)
        return std::nullopt;
    double value = CommandUnits::rounded(CommandUnits::convert(from.value, from.unit, to));
    if (!std::isfinite(value))
        return std::nullopt;
    return UnitConversion { from, UnitQuantity { value, to } };
}

} // namespace

std::string UnitQuantity::text() const
{
    auto number = CommandUnits::format(value);
    return unit.label == "°" ? number + "°" : number + " " + std::string(unit.label);
}

std::optional<UnitConversion> CommandUnits::convert(std::string_view query)
{
    auto normalized = normalize(query);
    auto parts = words(normalized);
    if (!parts.empty() && asciiLower(parts.front()) == "convert")
        parts.erase(parts.begin());
    if (parts.empty())
        return std::nullopt;

    for (std::size_t index = parts.size() - 1; index-- > 1;) {
        if (!isConnector(parts[index]))
            continue;
        auto quantity = parseQuantity(joined(parts, 0, index));
        auto target = unit(joined(parts, index + 1, parts.size()));
        if (quantity && target)
            return conversion(*quantity, *target);
    }

    auto quantity = parseQuantity(joined(parts, 0, parts.size()));
    if (!quantity)
        return std::nullopt;
    const auto* target = lookUp(UnitTable::defaultTargets(), quantity->unit.label);
    if (!target)
        return std::nullopt;
    return conversion(*quantity, *target);
}

double CommandUnits::convert(double value, const UnitInfo& from, const UnitInfo& to)
{
    return static_cast<double>(to.fromBase(from.toBase(value)));
}

std::optional<UnitInfo> CommandUnits::unit(std::string_view name)
{
    if (const auto* exact = UnitTable::unitByLabel(name))
        return *exact;
    auto lower = asciiLower(name);
    if (const auto* alias = lookUp(UnitTable::aliases(), lower))
        return *alias;
    if (const auto* label = UnitTable::unitByLabel(lower))
        return *label;
    if (const auto* rate = lookUp(UnitTable::bitAliases(), lower))
        return *rate;
    return std::nullopt;
}

std::optional<UnitQuantity> CommandUnits::parseQuantity(std::string_view text)
{
    std::size_t index = 0;
    if (index < text.size() && (text[index] == '-' || text[index] == '+'))
        ++index;
    std::size_t digitsStart = index;
    while (index < text.size() && isDigit(text[index]))
        ++index;
    bool hasDigits = index > digitsStart;
    if (index < text.size() && text[index] == '.') {
        ++index;
        std::size_t fractionStart = index;
        while (index < text.size() && isDigit(text[index]))
            ++index;
        hasDigits = hasDigits || index > fractionStart;
    }
    if (!hasDigits)
        return std::nullopt;

    // from_chars takes no leading "+".
    std::size_t numberStart = text[0] == '+' ? 1 : 0;
    double value = 0;
    auto [end, error] = std::from_chars(text.data() + numberStart, text.data() + index, value);
    if (error != std::errc() || end != text.data() + index || !std::isfinite(value))
        return std::nullopt;

    auto name = text.substr(index);
    if (!name.empty() && name.front() == ' ')
        name.remove_prefix(1);
    if (name.empty())
        return std::nullopt;
    auto found = unit(name);
    if (!found)
        return std::nullopt;
    return UnitQuantity { value, *found };
}

std::string CommandUnits::normalize(std::string_view query)
{
    std::string text(query);
    static constexpr std::array<std::array<std::string_view, 2>, 10> replacements { {
        { "μ", "µ" }, { "º", "°" }, { "˚", "°" }, { "℃", "°C" }, { "℉", "°F" }, { "^2", "²" }, { "^3", "³" },
        { "->", " -> " }, { "→", " → " }, { "=", " = " },
    } };
    for (const auto& [from, to] : replacements)
        text = replaceAll(std::move(text), from, to);

    std::string result;
    result.reserve(text.size());
    for (std::size_t index = 0; index < text.size(); ++index) {
        char character = text[index];
        bool groupComma = character == ',' && index > 0 && isDigit(text[index - 1]) && index + 3 < text.size()
            && isDigit(text[index + 1]) && isDigit(text[index + 2]) && isDigit(text[index + 3])
            && (index + 4 == text.size() || !isDigit(text[index + 4]));
        if (groupComma)
            continue;
        if (isSpace(character)) {
            if (!result.empty() && result.back() != ' ')
                result += ' ';
            continue;
        }
        result += character;
    }
    if (!result.empty() && result.back() == ' ')
        result.pop_back();
    return result;
}

double CommandUnits::rounded(double value)
{
    if (value == 0 || !std::isfinite(value))
        return value;
    std::array<char, 64> buffer {};
    auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
        std::chars_format::scientific, keptDigits(value, shownDigits) - 1);
    if (error != std::errc())
        return value;
    double result = value;
    std::from_chars(buffer.data(), end, result);
    return result;
}

std::string CommandUnits::format(double value)
{
    if (value == 0)
        return "0";
    double magnitude = std::fabs(value);
    if (magnitude >= 1e15 || magnitude < 1e-9)
        return generalText(value, shownDigits);
    return decimalText(value, shownDigits, /*fractionDigits=*/20, Grouping::none, "en_US_POSIX");
}

} // namespace quillmar
