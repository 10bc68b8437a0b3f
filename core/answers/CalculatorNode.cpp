#include "core/answers/CalculatorNode.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/answers/CalculatorFailure.h"
#include "core/answers/CalculatorFunctions.h"

namespace quillmar {

namespace {

CalculatorNode withChildren(CalculatorNode::Kind kind, std::vector<CalculatorNode> children)
{
    CalculatorNode node;
    node.kind = kind;
    for (const auto& child : children)
        node.height = std::max(node.height, child.height + 1);
    node.children = std::move(children);
    return node;
}

CalculatorNode withOperand(CalculatorNode::Kind kind, CalculatorNode operand)
{
    std::vector<CalculatorNode> children;
    children.push_back(std::move(operand));
    return withChildren(kind, std::move(children));
}

Result<double> applyBinary(char32_t op, double left, double right)
{
    switch (op) {
    case U'+':
        return left + right;
    case U'-':
        return left - right;
    case U'*':
        return left * right;
    case U'/':
        if (right == 0)
            return calculatorError(CalculatorFailure::domain);
        return left / right;
    case U'%':
        if (right == 0)
            return calculatorError(CalculatorFailure::domain);
        return std::fmod(left, right);
    case U'^':
        return std::pow(left, right);
    default:
        return calculatorError(CalculatorFailure::syntax);
    }
}

} // namespace

CalculatorNode CalculatorNode::constant(double value)
{
    CalculatorNode node;
    node.value = value;
    return node;
}

CalculatorNode CalculatorNode::negate(CalculatorNode operand)
{
    return withOperand(Kind::negate, std::move(operand));
}

CalculatorNode CalculatorNode::percent(CalculatorNode operand)
{
    return withOperand(Kind::percent, std::move(operand));
}

CalculatorNode CalculatorNode::factorial(CalculatorNode operand)
{
    return withOperand(Kind::factorial, std::move(operand));
}

CalculatorNode CalculatorNode::degrees(CalculatorNode operand)
{
    return withOperand(Kind::degrees, std::move(operand));
}

CalculatorNode CalculatorNode::binary(char32_t op, CalculatorNode left, CalculatorNode right)
{
    std::vector<CalculatorNode> children;
    children.push_back(std::move(left));
    children.push_back(std::move(right));
    auto node = withChildren(Kind::binary, std::move(children));
    node.op = op;
    return node;
}

CalculatorNode CalculatorNode::call(std::string name, std::vector<CalculatorNode> arguments)
{
    auto node = withChildren(Kind::call, std::move(arguments));
    node.name = std::move(name);
    return node;
}

Result<double> CalculatorNode::evaluate(int depth) const
{
    if (depth > maximumDepth)
        return calculatorError(CalculatorFailure::tooComplex);

    double result = 0;
    switch (kind) {
    case Kind::constant:
        result = value;
        break;
    case Kind::negate: {
        QUILLMAR_TRY_ASSIGN(double operand, children[0].evaluate(depth + 1));
        result = -operand;
        break;
    }
    case Kind::percent: {
        QUILLMAR_TRY_ASSIGN(double operand, children[0].evaluate(depth + 1));
        result = operand / 100;
        break;
    }
    case Kind::degrees: {
        QUILLMAR_TRY_ASSIGN(double operand, children[0].evaluate(depth + 1));
        result = operand * std::numbers::pi / 180;
        break;
    }
    case Kind::factorial: {
        QUILLMAR_TRY_ASSIGN(double operand, children[0].evaluate(depth + 1));
        result = calculatorFactorial(operand);
        break;
    }
    case Kind::binary: {
        QUILLMAR_TRY_ASSIGN(double left, children[0].evaluate(depth + 1));
        const auto& right = children[1];
        if ((op == U'+' || op == U'-') && right.kind == Kind::percent) {
            if (depth + 1 > maximumDepth)
                return calculatorError(CalculatorFailure::tooComplex);
            QUILLMAR_TRY_ASSIGN(double share, right.children[0].evaluate(depth + 2));
            double part = left * share / 100;
            result = op == U'+' ? left + part : left - part;
            break;
        }
        QUILLMAR_TRY_ASSIGN(double rightValue, right.evaluate(depth + 1));
        QUILLMAR_TRY_ASSIGN(result, applyBinary(op, left, rightValue));
        break;
    }
    case Kind::call: {
        const auto* function = calculatorFunction(name);
        if (!function)
            return calculatorError(CalculatorFailure::unknown, name);
        auto count = static_cast<int>(children.size());
        if (count < function->minimumArguments || (function->maximumArguments >= 0 && count > function->maximumArguments))
            return calculatorError(CalculatorFailure::domain, name);
        std::vector<double> arguments;
        arguments.reserve(children.size());
        for (const auto& child : children) {
            QUILLMAR_TRY_ASSIGN(double argument, child.evaluate(depth + 1));
            arguments.push_back(argument);
        }
        result = function->apply(arguments);
        break;
    }
    }
    if (!std::isfinite(result))
        return calculatorError(CalculatorFailure::domain);
    return result;
}

bool CalculatorNode::isCalculation() const
{
    if (kind == Kind::constant)
        return false;
    if (kind == Kind::negate && children[0].kind == Kind::constant)
        return false;
    return true;
}

} // namespace quillmar
