#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "core/answers/CalculatorToken.h"
#include "core/answers/NumberText.h"
#include "core/base/Result.h"

namespace quillmar {

// A number read from the start of a text: its value and how many code points it took.
struct NumberReading {
    double value = 0;
    std::size_t length = 0;

    bool operator==(const NumberReading&) const = default;
};

// Splits a calculator query into tokens.
class CalculatorTokenizer final {
public:
    // Whitespace separates tokens; letters (and digits after a letter, as in "log2") form lower-cased
    // identifiers; "plus", "minus" and "times" become "+", "-" and "*"; "×" and "·" become "*", "÷" "/",
    // and the minus sign "−" "-"; square and curly brackets become round ones. Digit-group commas are
    // read inside numbers except within the brackets of a function call, so "1,000,000" is a million and
    // "max(1,2)" has two arguments; space-separated groups are read everywhere ("12 500" is 12500). A
    // number directly after another number fails with `syntax` (so "12 34" is no product). Any other
    // character fails with `CalculatorFailure::syntax`, as does a
    // number too large for a double. More than `CalculatorNode::maximumDepth` open brackets fail with
    // `tooComplex` as soon as they are read.
    static Result<std::vector<CalculatorToken>> tokenize(std::string_view text);

    // Reads a number at the start of `text`: hexadecimal digits after "0x" or "0X" (at least one); or
    // digits with at most one decimal point (".5" and "5." are numbers) and an optional exponent: "e" or
    // "E", an optional sign and at least one digit (otherwise the "e" is left for the next token, so
    // "2e" is 2 followed by the name e). Digit groups are read too: a leading group of one to three digits,
    // then groups of exactly three, each after one separator, all separators alike: a space (plain,
    // no-break, thin or narrow no-break, as locales write them) or, with `Grouping::grouped` only, a
    // comma. The first separator that breaks the pattern ends the number before it, so "12 34" reads 12.
    // Nothing when `text` does not start with a digit or a decimal point followed by a digit, or when the
    // value is out of a double's range.
    static std::optional<NumberReading> readNumber(std::u32string_view text, Grouping allowsGrouping);
};

} // namespace quillmar
