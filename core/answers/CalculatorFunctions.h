#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace quillmar {

// The named constants ("pi", "π", "e", "tau", "τ", "phi", "φ"); names are lower-case.
std::optional<double> calculatorConstant(std::string_view name);

// One row of the function table.
struct CalculatorFunction {
    std::string_view name;
    int minimumArguments;
    int maximumArguments; // -1: any number from the minimum up
    // The value for arguments whose count is within the bounds; NaN outside the function's domain.
    double (*apply)(std::span<const double> arguments);
};

// The row for a lower-case function name, or nothing. Angles are in radians; "sin", "cos" and "tan" give 0
// for a result smaller than the rounding error of their argument (sin π is 0, not 1.2e-16).
const CalculatorFunction* calculatorFunction(std::string_view name);

// n! for an integer n from 0 to 170; NaN for anything else (171! is beyond a double).
double calculatorFactorial(double n);

} // namespace quillmar
