#pragma once

#include <cstddef>
#include <span>

#include "core/answers/CalculatorNode.h"
#include "core/answers/CalculatorToken.h"
#include "core/base/Result.h"

namespace quillmar {

// Recursive descent over calculator tokens, lowest precedence first:
//
//   expression: term (("+" | "-") term)*                       left-associative
//   term:       unary (("*" | "/" | "%") unary | unary)*       left-associative; an operand right after
//                                                              an operand multiplies ("2π", "3(4+1)")
//   unary:      "+" unary | "-" unary | power                  so -2^2 is -(2^2)
//   power:      postfix ("^" unary)?                           right-associative; 2^-1 is allowed
//   postfix:    primary ("!" | "°" | "%")*                     "%" is a percentage only when no operand
//                                                              follows it; otherwise it is the remainder
//   primary:    number | "(" expression ")" | name "(" arguments ")" | name (a constant)
//
// Two numbers side by side do not multiply ("1 000" is refused rather than read as 0).
//
// The parser never recurses without bound: more than `maximumDepth` nested brackets, a chain of more
// than `maximumSigns` signs and exponents, or a tree deeper than evaluation allows fails with
// `tooComplex` as soon as it is seen, so hostile input costs time linear in its length and little stack.
class CalculatorParser final {
public:
    static constexpr int maximumDepth = CalculatorNode::maximumDepth;
    static constexpr int maximumSigns = 1000;

    explicit CalculatorParser(std::span<const CalculatorToken> tokens) : m_tokens(tokens) { }

    // The whole token list as one expression; tokens left over fail with `syntax`, an unknown constant
    // with `unknown`.
    Result<CalculatorNode> parse();

    Result<CalculatorNode> expression();
    Result<CalculatorNode> term();
    Result<CalculatorNode> unary();
    Result<CalculatorNode> power();
    Result<CalculatorNode> postfix();
    Result<CalculatorNode> primary();

private:
    const CalculatorToken* peek(std::size_t ahead = 0) const;
    bool takeSymbol(char32_t symbol);
    // An operand starts at the current token and may multiply the one before it.
    bool implicitOperandFollows() const;
    static Result<CalculatorNode> checked(CalculatorNode node);

    std::span<const CalculatorToken> m_tokens;
    std::size_t m_position = 0;
    int m_brackets = 0;
    int m_signs = 0;
};

} // namespace quillmar
