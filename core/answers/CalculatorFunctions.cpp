#include "core/answers/CalculatorFunctions.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace quillmar {

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

struct NamedConstant {
    std::string_view name;
    double value;
};

constexpr std::array constants {
    NamedConstant { "pi", std::numbers::pi },
    NamedConstant { "π", std::numbers::pi },
    NamedConstant { "e", std::numbers::e },
    NamedConstant { "tau", 2 * std::numbers::pi },
    NamedConstant { "τ", 2 * std::numbers::pi },
    NamedConstant { "phi", std::numbers::phi },
    NamedConstant { "φ", std::numbers::phi },
};

double positiveOnly(double x, double (*function)(double))
{
    return x > 0 ? function(x) : notANumber;
}

// sin π is 1.2e-16 in doubles, because π itself is off by that much. A result smaller than the rounding
// error of its argument carries no information, so it is shown as the 0 it stands for.
double trigonometric(double x, double (*function)(double))
{
    double result = function(x);
    return std::fabs(result) < std::fabs(x) * std::numeric_limits<double>::epsilon() ? 0.0 : result;
}

double logarithm(std::span<const double> a)
{
    if (a.size() == 1)
        return positiveOnly(a[0], [](double x) { return std::log10(x); });
    double x = a[0];
    double base = a[1];
    if (!(x > 0) || !(base > 0) || base == 1)
        return notANumber;
    return std::log(x) / std::log(base);
}

double roundTo(std::span<const double> a)
{
    if (a.size() == 1)
        return std::round(a[0]);
    double places = std::clamp(std::round(a[1]), 0.0, 12.0);
    double scale = std::pow(10.0, places);
    double scaled = a[0] * scale;
    // Beyond 2^53 a double has no fraction left to round.
    if (!std::isfinite(scaled) || std::fabs(scaled) >= 9007199254740992.0)
        return a[0];
    return std::round(scaled) / scale;
}

const std::array functions {
    CalculatorFunction { "sqrt", 1, 1, [](std::span<const double> a) { return std::sqrt(a[0]); } },
    CalculatorFunction { "cbrt", 1, 1, [](std::span<const double> a) { return std::cbrt(a[0]); } },
    CalculatorFunction { "abs", 1, 1, [](std::span<const double> a) { return std::fabs(a[0]); } },
    CalculatorFunction { "sin", 1, 1, [](std::span<const double> a) { return trigonometric(a[0], [](double x) { return std::sin(x); }); } },
    CalculatorFunction { "cos", 1, 1, [](std::span<const double> a) { return trigonometric(a[0], [](double x) { return std::cos(x); }); } },
    CalculatorFunction { "tan", 1, 1, [](std::span<const double> a) { return trigonometric(a[0], [](double x) { return std::tan(x); }); } },
    CalculatorFunction { "asin", 1, 1, [](std::span<const double> a) { return std::asin(a[0]); } },
    CalculatorFunction { "acos", 1, 1, [](std::span<const double> a) { return std::acos(a[0]); } },
    CalculatorFunction { "atan", 1, 1, [](std::span<const double> a) { return std::atan(a[0]); } },
    CalculatorFunction { "sinh", 1, 1, [](std::span<const double> a) { return std::sinh(a[0]); } },
    CalculatorFunction { "cosh", 1, 1, [](std::span<const double> a) { return std::cosh(a[0]); } },
    CalculatorFunction { "tanh", 1, 1, [](std::span<const double> a) { return std::tanh(a[0]); } },
    CalculatorFunction { "exp", 1, 1, [](std::span<const double> a) { return std::exp(a[0]); } },
    CalculatorFunction { "deg", 1, 1, [](std::span<const double> a) { return a[0] * 180 / std::numbers::pi; } },
    CalculatorFunction { "rad", 1, 1, [](std::span<const double> a) { return a[0] * std::numbers::pi / 180; } },
    CalculatorFunction { "ln", 1, 1, [](std::span<const double> a) { return positiveOnly(a[0], [](double x) { return std::log(x); }); } },
    CalculatorFunction { "log", 1, 2, logarithm },
    CalculatorFunction { "log2", 1, 1, [](std::span<const double> a) { return positiveOnly(a[0], [](double x) { return std::log2(x); }); } },
    CalculatorFunction { "log10", 1, 1, [](std::span<const double> a) { return positiveOnly(a[0], [](double x) { return std::log10(x); }); } },
    CalculatorFunction { "floor", 1, 1, [](std::span<const double> a) { return std::floor(a[0]); } },
    CalculatorFunction { "ceil", 1, 1, [](std::span<const double> a) { return std::ceil(a[0]); } },
    CalculatorFunction { "round", 1, 2, roundTo },
    CalculatorFunction { "min", 1, -1, [](std::span<const double> a) { return *std::min_element(a.begin(), a.end()); } },
    CalculatorFunction { "max", 1, -1, [](std::span<const double> a) { return *std::max_element(a.begin(), a.end()); } },
    CalculatorFunction { "pow", 2, 2, [](std::span<const double> a) { return std::pow(a[0], a[1]); } },
    CalculatorFunction { "fact", 1, 1, [](std::span<const double> a) { return calculatorFactorial(a[0]); } },
};

} // namespace

std::optional<double> calculatorConstant(std::string_view name)
{
    for (const auto& constant : constants) {
        if (constant.name == name)
            return constant.value;
    }
    return std::nullopt;
}

const CalculatorFunction* calculatorFunction(std::string_view name)
{
    for (const auto& function : functions) {
        if (function.name == name)
            return &function;
    }
    return nullptr;
}

double calculatorFactorial(double n)
{
    if (!(n >= 0 && n <= 170) || n != std::floor(n))
        return notANumber;
    double product = 1;
    for (int factor = 2; factor <= static_cast<int>(n); ++factor)
        product *= factor;
    return product;
}

} // namespace quillmar
