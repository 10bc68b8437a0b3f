#pragma once

#include <string>

#include "core/base/Result.h"

namespace quillmar {

// Why a calculator query has no answer. Never shown to the user: a failure only means "no answer".
enum class CalculatorFailure {
    unknown, // an unknown function or constant; the Error's context holds the name
    syntax,
    domain, // outside a function's domain, a wrong number of arguments, a division by zero, no finite result
    tooComplex, // nested too deeply
};

// The Error that carries `failure`; its code is "calculator.<failure>".
Error calculatorError(CalculatorFailure failure, std::string name = {});

// The failure an Error from the calculator carries; `syntax` for any other Error.
CalculatorFailure calculatorFailure(const Error& error);

} // namespace quillmar
