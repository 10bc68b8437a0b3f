#pragma once

#include <string>

namespace quillmar {

// One token of a calculator query.
struct CalculatorToken {
    enum class Kind { number, identifier, symbol };

    Kind kind = Kind::number;
    double number = 0; // for `number`
    std::string name; // for `identifier`: lower-cased, so "PI" and "pi" are one name
    char32_t symbol = 0; // for `symbol`: one of + - * / % ^ ! ° ( ) ,

    static CalculatorToken makeNumber(double value) { return { Kind::number, value, {}, 0 }; }
    static CalculatorToken makeIdentifier(std::string name) { return { Kind::identifier, 0, std::move(name), 0 }; }
    static CalculatorToken makeSymbol(char32_t symbol) { return { Kind::symbol, 0, {}, symbol }; }

    bool isSymbol(char32_t wanted) const { return kind == Kind::symbol && symbol == wanted; }
    // A token that can start an operand: a number, a name or an opening bracket.
    bool startsOperand() const { return kind != Kind::symbol || symbol == U'('; }

    bool operator==(const CalculatorToken&) const = default;
};

} // namespace quillmar
