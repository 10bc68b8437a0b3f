#include "core/answers/CalculatorParser.h"

#include <utility>

#include "core/answers/CalculatorFailure.h"
#include "core/answers/CalculatorFunctions.h"

namespace quillmar {

namespace {

using Kind = CalculatorToken::Kind;

// Keeps a nesting counter raised for the lifetime of one recursive call.
class NestingScope final {
public:
    explicit NestingScope(int& counter) : m_counter(counter) { ++m_counter; }
    ~NestingScope() { --m_counter; }
    NestingScope(const NestingScope&) = delete;
    NestingScope& operator=(const NestingScope&) = delete;

private:
    int& m_counter;
};

} // namespace

const CalculatorToken* CalculatorParser::peek(std::size_t ahead) const
{
    return m_position + ahead < m_tokens.size() ? &m_tokens[m_position + ahead] : nullptr;
}

bool CalculatorParser::takeSymbol(char32_t symbol)
{
    const auto* token = peek();
    if (!token || !token->isSymbol(symbol))
        return false;
    ++m_position;
    return true;
}

bool CalculatorParser::implicitOperandFollows() const
{
    const auto* next = peek();
    return next && next->startsOperand();
}

Result<CalculatorNode> CalculatorParser::checked(CalculatorNode node)
{
    // Height h puts the deepest node at depth h - 1.
    if (node.height > maximumDepth + 1)
        return calculatorError(CalculatorFailure::tooComplex);
    return node;
}

Result<CalculatorNode> CalculatorParser::parse()
{
    QUILLMAR_TRY_ASSIGN(auto node, expression());
    if (m_position != m_tokens.size())
        return calculatorError(CalculatorFailure::syntax);
    return node;
}

Result<CalculatorNode> CalculatorParser::expression()
{
    QUILLMAR_TRY_ASSIGN(auto left, term());
    while (const auto* token = peek()) {
        if (!token->isSymbol(U'+') && !token->isSymbol(U'-'))
            break;
        ++m_position;
        QUILLMAR_TRY_ASSIGN(auto right, term());
        QUILLMAR_TRY_ASSIGN(left, checked(CalculatorNode::binary(token->symbol, std::move(left), std::move(right))));
    }
    return left;
}

Result<CalculatorNode> CalculatorParser::term()
{
    QUILLMAR_TRY_ASSIGN(auto left, unary());
    while (const auto* token = peek()) {
        char32_t op = U'*';
        if (token->isSymbol(U'*') || token->isSymbol(U'/') || token->isSymbol(U'%')) {
            op = token->symbol;
            ++m_position;
        } else if (!implicitOperandFollows()) {
            break;
        }
        QUILLMAR_TRY_ASSIGN(auto right, unary());
        QUILLMAR_TRY_ASSIGN(left, checked(CalculatorNode::binary(op, std::move(left), std::move(right))));
    }
    return left;
}

Result<CalculatorNode> CalculatorParser::unary()
{
    NestingScope scope(m_signs);
    if (m_signs > maximumSigns)
        return calculatorError(CalculatorFailure::tooComplex);
    if (takeSymbol(U'+'))
        return unary();
    if (takeSymbol(U'-')) {
        QUILLMAR_TRY_ASSIGN(auto operand, unary());
        return checked(CalculatorNode::negate(std::move(operand)));
    }
    return power();
}

Result<CalculatorNode> CalculatorParser::power()
{
    QUILLMAR_TRY_ASSIGN(auto base, postfix());
    if (!takeSymbol(U'^'))
        return base;
    QUILLMAR_TRY_ASSIGN(auto exponent, unary());
    return checked(CalculatorNode::binary(U'^', std::move(base), std::move(exponent)));
}

Result<CalculatorNode> CalculatorParser::postfix()
{
    QUILLMAR_TRY_ASSIGN(auto node, primary());
    while (const auto* token = peek()) {
        if (token->isSymbol(U'!')) {
            node = CalculatorNode::factorial(std::move(node));
        } else if (token->isSymbol(U'°')) {
            node = CalculatorNode::degrees(std::move(node));
        } else if (token->isSymbol(U'%')) {
            // "10 % 3" is a remainder: leave the "%" to `term`.
            const auto* after = peek(1);
            if (after && after->startsOperand())
                break;
            node = CalculatorNode::percent(std::move(node));
        } else {
            break;
        }
        ++m_position;
        QUILLMAR_TRY_ASSIGN(node, checked(std::move(node)));
    }
    return node;
}

Result<CalculatorNode> CalculatorParser::primary()
{
    const auto* token = peek();
    if (!token)
        return calculatorError(CalculatorFailure::syntax);

    if (token->kind == Kind::number) {
        ++m_position;
        return CalculatorNode::constant(token->number);
    }

    if (token->isSymbol(U'(')) {
        ++m_position;
        NestingScope scope(m_brackets);
        if (m_brackets > maximumDepth)
            return calculatorError(CalculatorFailure::tooComplex);
        QUILLMAR_TRY_ASSIGN(auto inner, expression());
        if (!takeSymbol(U')'))
            return calculatorError(CalculatorFailure::syntax);
        return inner;
    }

    if (token->kind == Kind::identifier) {
        ++m_position;
        if (!takeSymbol(U'(')) {
            auto value = calculatorConstant(token->name);
            if (!value)
                return calculatorError(CalculatorFailure::unknown, token->name);
            return CalculatorNode::constant(*value);
        }
        NestingScope scope(m_brackets);
        if (m_brackets > maximumDepth)
            return calculatorError(CalculatorFailure::tooComplex);
        std::vector<CalculatorNode> arguments;
        if (!takeSymbol(U')')) {
            do {
                QUILLMAR_TRY_ASSIGN(auto argument, expression());
                arguments.push_back(std::move(argument));
            } while (takeSymbol(U','));
            if (!takeSymbol(U')'))
                return calculatorError(CalculatorFailure::syntax);
        }
        return checked(CalculatorNode::call(token->name, std::move(arguments)));
    }

    return calculatorError(CalculatorFailure::syntax);
}

} // namespace quillmar
