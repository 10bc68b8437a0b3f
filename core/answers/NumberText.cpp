#include "core/answers/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <unordered_map>

#include <fmt/format.h>

#include <unicode/numberformatter.h>

namespace quillmar {

namespace {

// Building an ICU formatter costs far more than formatting with it, and a query is answered on every
// keystroke, so each thread keeps the few it has used. The cache is small and cleared when full.
const icu::number::LocalizedNumberFormatter& formatterFor(std::string_view locale, int significantDigits,
    int fractionDigits, Grouping grouping)
{
    constexpr std::size_t maximumFormatters = 16;
    thread_local std::unordered_map<std::string, icu::number::LocalizedNumberFormatter> formatters;
    auto key = fmt::format("{}|{}|{}|{}", locale, significantDigits, fractionDigits, grouping == Grouping::grouped);
    auto found = formatters.find(key);
    if (found != formatters.end())
        return found->second;
    if (formatters.size() >= maximumFormatters)
        formatters.clear();
    auto formatter = icu::number::NumberFormatter::withLocale(icu::Locale(std::string(locale).c_str()))
                         .precision(icu::number::Precision::maxFraction(fractionDigits).withMaxDigits(significantDigits))
                         .roundingMode(UNUM_ROUND_HALFUP)
                         .grouping(grouping == Grouping::grouped ? UNUM_GROUPING_AUTO : UNUM_GROUPING_OFF);
    return formatters.emplace(std::move(key), std::move(formatter)).first->second;
}

} // namespace

std::string decimalText(double value, int significantDigits, int fractionDigits, Grouping grouping,
    std::string_view locale)
{
    const auto& formatter = formatterFor(locale, keptDigits(value, significantDigits), fractionDigits, grouping);
    UErrorCode status = U_ZERO_ERROR;
    auto formatted = formatter.formatDouble(value, status);
    auto text = formatted.toString(status);
    if (U_FAILURE(status))
        return generalText(value, significantDigits);
    std::string utf8;
    text.toUTF8String(utf8);
    return utf8;
}

int keptDigits(double value, int significantDigits)
{
    double magnitude = std::fabs(value);
    if (!(magnitude >= 1) || !std::isfinite(magnitude))
        return significantDigits;
    int integerDigits = static_cast<int>(std::floor(std::log10(magnitude))) + 1;
    return std::max(significantDigits, integerDigits);
}

std::string generalText(double value, int precision)
{
    std::array<char, 64> buffer {};
    auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general, precision);
    if (error != std::errc())
        return {};
    return std::string(buffer.data(), end);
}

} // namespace quillmar
