#include "core/answers/CalculatorFailure.h"

#include <array>
#include <string_view>

namespace quillmar {

namespace {

struct FailureText {
    CalculatorFailure failure;
    std::string_view code;
    std::string_view message;
};

constexpr std::array failureTexts {
    FailureText { CalculatorFailure::unknown, "calculator.unknown", "That name is not known." },
    FailureText { CalculatorFailure::syntax, "calculator.syntax", "That is not a calculation." },
    FailureText { CalculatorFailure::domain, "calculator.domain", "That has no finite result." },
    FailureText { CalculatorFailure::tooComplex, "calculator.tooComplex", "That calculation is nested too deeply." },
};

} // namespace

Error calculatorError(CalculatorFailure failure, std::string name)
{
    for (const auto& text : failureTexts) {
        if (text.failure == failure)
            return Error { std::string(text.code), std::string(text.message), std::move(name) };
    }
    return Error { "calculator.syntax", "That is not a calculation.", std::move(name) };
}

CalculatorFailure calculatorFailure(const Error& error)
{
    for (const auto& text : failureTexts) {
        if (text.code == error.code)
            return text.failure;
    }
    return CalculatorFailure::syntax;
}

} // namespace quillmar
