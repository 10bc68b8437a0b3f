#pragma once

#include <string>
#include <vector>

#include "core/base/Result.h"

namespace quillmar {

// The parse tree of a calculator query. Each node knows its height (a leaf is 1), so that a tree can be
// refused before it grows deeper than evaluation allows.
struct CalculatorNode {
    enum class Kind { constant, negate, percent, factorial, degrees, binary, call };

    // Nodes deeper than this (the root is at depth 0) are not evaluated.
    static constexpr int maximumDepth = 199;

    Kind kind = Kind::constant;
    double value = 0; // for `constant`
    char32_t op = 0; // for `binary`: + - * / % ^
    std::string name; // for `call`: the lower-cased function name
    std::vector<CalculatorNode> children; // the operand, the two sides, or the arguments
    int height = 1;

    static CalculatorNode constant(double value);
    static CalculatorNode negate(CalculatorNode operand);
    static CalculatorNode percent(CalculatorNode operand);
    static CalculatorNode factorial(CalculatorNode operand);
    static CalculatorNode degrees(CalculatorNode operand);
    static CalculatorNode binary(char32_t op, CalculatorNode left, CalculatorNode right);
    static CalculatorNode call(std::string name, std::vector<CalculatorNode> arguments);

    // The value of this node at `depth`. `percent` is x / 100; `degrees` x × π / 180; "^" the power
    // function; "%" between operands the floating remainder. The right side of "+" or "-" that is a
    // percentage is taken of the left side (200 + 10% is 220). Fails with `tooComplex` above
    // `maximumDepth`, with `domain` for a division or remainder by zero, a factorial of anything but an
    // integer from 0 to 170, a wrong number of arguments, an argument outside a function's domain or any
    // result that is not finite, and with `unknown` for a function name that is not in the table.
    Result<double> evaluate(int depth = 0) const;

    // False for a lone number and a lone negated number: typing "42" or "-42" is not a calculation.
    bool isCalculation() const;

    bool operator==(const CalculatorNode&) const = default;
};

} // namespace quillmar
