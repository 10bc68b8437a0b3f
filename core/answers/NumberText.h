#pragma once

#include <string>
#include <string_view>

namespace quillmar {

enum class Grouping { none, grouped };

// Number text for the inline answers, formatted through ICU.
//
// `decimalText` writes `value` with at most `significantDigits` significant digits and at most
// `fractionDigits` digits after the separator (rounding half away from zero, trailing zeros dropped), in
// the conventions of `locale` (an ICU locale identifier such as "de_DE"; "en_US_POSIX" gives the plain
// form that parses back as a number). Grouping separators appear only with `Grouping::grouped` and only
// where the locale uses them. An unknown locale falls back to ICU's root conventions. The integer part is
// never rounded away: 123456789012345 keeps all 15 digits rather than showing made-up zeros, so every
// digit shown is right (callers switch to the exponent form from 1e15 on).
std::string decimalText(double value, int significantDigits, int fractionDigits, Grouping grouping,
    std::string_view locale);

// How many significant digits `value` keeps: `significantDigits`, or the number of digits of its
// integer part when that is more.
int keptDigits(double value, int significantDigits);

// The C "%.<precision>g" form of `value` ("7.257415615e+306"), independent of any locale.
std::string generalText(double value, int precision);

} // namespace quillmar
