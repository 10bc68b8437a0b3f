#include "core/answers/CalculatorTokenizer.h"

#include <charconv>
#include <cmath>
#include <string>

#include <unicode/uchar.h>

#include "core/answers/CalculatorFailure.h"
#include "core/answers/CalculatorNode.h"
#include "core/base/Utf8.h"

namespace quillmar {

namespace {

bool isDigit(char32_t character)
{
    return character >= U'0' && character <= U'9';
}

bool isDigitAt(std::u32string_view text, std::size_t index)
{
    return index < text.size() && isDigit(text[index]);
}

std::optional<int> hexDigit(char32_t character)
{
    if (isDigit(character))
        return static_cast<int>(character - U'0');
    if (character >= U'a' && character <= U'f')
        return static_cast<int>(character - U'a' + 10);
    if (character >= U'A' && character <= U'F')
        return static_cast<int>(character - U'A' + 10);
    return std::nullopt;
}

std::optional<NumberReading> readHexadecimal(std::u32string_view text)
{
    std::size_t index = 2;
    double value = 0;
    while (index < text.size()) {
        auto digit = hexDigit(text[index]);
        if (!digit)
            break;
        value = value * 16 + *digit;
        ++index;
    }
    if (index == 2 || !std::isfinite(value))
        return std::nullopt;
    return NumberReading { value, index };
}

// The spaces that locales put between digit groups: the plain one, the no-break one, the thin one and the
// narrow no-break one that French and others use.
bool isGroupSpace(char32_t character)
{
    return character == U' ' || character == U'\u00a0' || character == U'\u2009' || character == U'\u202f';
}

bool isGroupSeparator(char32_t character, Grouping allowsGrouping)
{
    return isGroupSpace(character) || (character == U',' && allowsGrouping == Grouping::grouped);
}

// A separator that continues a digit grouping: three digits follow it, and no fourth.
bool continuesGroups(std::u32string_view text, std::size_t index)
{
    return isDigitAt(text, index + 1) && isDigitAt(text, index + 2) && isDigitAt(text, index + 3)
        && !isDigitAt(text, index + 4);
}

char32_t symbolFor(char32_t character)
{
    switch (character) {
    case U'+':
    case U'-':
    case U'*':
    case U'/':
    case U'%':
    case U'^':
    case U'!':
    case U'°':
    case U'(':
    case U')':
    case U',':
        return character;
    case U'×':
    case U'·':
        return U'*';
    case U'÷':
        return U'/';
    case U'−':
        return U'-';
    case U'[':
    case U'{':
        return U'(';
    case U']':
    case U'}':
        return U')';
    default:
        return 0;
    }
}

bool isLetter(char32_t character)
{
    return u_isalpha(static_cast<UChar32>(character));
}

} // namespace

std::optional<NumberReading> CalculatorTokenizer::readNumber(std::u32string_view text, Grouping allowsGrouping)
{
    if (text.size() > 2 && text[0] == U'0' && (text[1] == U'x' || text[1] == U'X') && hexDigit(text[2]))
        return readHexadecimal(text);

    std::string digits;
    std::size_t index = 0;
    std::size_t leadingDigits = 0;
    while (isDigitAt(text, index)) {
        digits += static_cast<char>(text[index++]);
        ++leadingDigits;
    }
    if (leadingDigits >= 1 && leadingDigits <= 3 && index < text.size()
        && isGroupSeparator(text[index], allowsGrouping)) {
        // One number keeps to one separator: "1,000 000" is a number followed by another.
        char32_t separator = text[index];
        while (index < text.size() && text[index] == separator && continuesGroups(text, index)) {
            digits.append({ static_cast<char>(text[index + 1]), static_cast<char>(text[index + 2]),
                static_cast<char>(text[index + 3]) });
            index += 4;
        }
    }
    bool hasFraction = false;
    if (index < text.size() && text[index] == U'.' && (leadingDigits > 0 || isDigitAt(text, index + 1))) {
        hasFraction = true;
        digits += '.';
        ++index;
        while (isDigitAt(text, index))
            digits += static_cast<char>(text[index++]);
    }
    if (leadingDigits == 0 && !hasFraction)
        return std::nullopt;
    if (index < text.size() && (text[index] == U'e' || text[index] == U'E')) {
        std::size_t exponent = index + 1;
        if (exponent < text.size() && (text[exponent] == U'+' || text[exponent] == U'-'))
            ++exponent;
        if (isDigitAt(text, exponent)) {
            digits += 'e';
            digits.append(text[index + 1] == U'-' ? "-" : "");
            index = exponent;
            while (isDigitAt(text, index))
                digits += static_cast<char>(text[index++]);
        }
    }

    double value = 0;
    auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || end != digits.data() + digits.size() || !std::isfinite(value))
        return std::nullopt;
    return NumberReading { value, index };
}

Result<std::vector<CalculatorToken>> CalculatorTokenizer::tokenize(std::string_view text)
{
    auto characters = decodeUtf8(text);
    std::u32string_view rest = characters;
    std::vector<CalculatorToken> tokens;
    // For each open bracket: whether it opened a function call's arguments, where commas separate.
    std::vector<bool> openCalls;

    while (!rest.empty()) {
        char32_t character = rest.front();
        if (u_isUWhiteSpace(static_cast<UChar32>(character))) {
            rest.remove_prefix(1);
            continue;
        }
        if (isDigit(character) || character == U'.') {
            // Two numbers side by side are no product anyone writes: "12 34" is a mistyped or
            // foreign-grouped number, and any answer to it would be wrong.
            if (!tokens.empty() && tokens.back().kind == CalculatorToken::Kind::number)
                return calculatorError(CalculatorFailure::syntax);
            bool insideCall = !openCalls.empty() && openCalls.back();
            auto number = readNumber(rest, insideCall ? Grouping::none : Grouping::grouped);
            if (!number)
                return calculatorError(CalculatorFailure::syntax);
            tokens.push_back(CalculatorToken::makeNumber(number->value));
            rest.remove_prefix(number->length);
            continue;
        }
        if (isLetter(character)) {
            std::u32string name;
            while (!rest.empty() && (isLetter(rest.front()) || isDigit(rest.front()))) {
                name += static_cast<char32_t>(u_tolower(static_cast<UChar32>(rest.front())));
                rest.remove_prefix(1);
            }
            if (name == U"plus")
                tokens.push_back(CalculatorToken::makeSymbol(U'+'));
            else if (name == U"minus")
                tokens.push_back(CalculatorToken::makeSymbol(U'-'));
            else if (name == U"times")
                tokens.push_back(CalculatorToken::makeSymbol(U'*'));
            else
                tokens.push_back(CalculatorToken::makeIdentifier(encodeUtf8(name)));
            continue;
        }
        char32_t symbol = symbolFor(character);
        if (symbol == 0)
            return calculatorError(CalculatorFailure::syntax);
        if (symbol == U'(') {
            // Deeper nesting could never be evaluated: stop reading at once.
            if (openCalls.size() >= static_cast<std::size_t>(CalculatorNode::maximumDepth))
                return calculatorError(CalculatorFailure::tooComplex);
            openCalls.push_back(!tokens.empty() && tokens.back().kind == CalculatorToken::Kind::identifier);
        }
        else if (symbol == U')' && !openCalls.empty())
            openCalls.pop_back();
        tokens.push_back(CalculatorToken::makeSymbol(symbol));
        rest.remove_prefix(1);
    }
    return tokens;
}

} // namespace quillmar
