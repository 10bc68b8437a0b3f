#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/answers/CalculatorFailure.h"
#include "core/answers/CalculatorNode.h"
#include "core/answers/CalculatorParser.h"
#include "core/answers/CalculatorToken.h"
#include "core/answers/NumberText.h"
#include "core/base/Result.h"

namespace quillmar {

// A calculator answer: the value and its two texts.
struct CalculatorAnswer {
    double value = 0;
    std::string text; // grouped, in the user's locale: what the command bar shows
    std::string copyText; // ungrouped, "en_US_POSIX": what executing the answer copies

    bool operator==(const CalculatorAnswer&) const = default;
};

// Arithmetic typed into the command bar.
class CommandCalculator final {
public:
    using Token = CalculatorToken;
    using Node = CalculatorNode;
    using Parser = CalculatorParser;
    using Failure = CalculatorFailure;

    // The locale of the copied text: plain digits that parse back as a number anywhere.
    static constexpr std::string_view copyLocale = "en_US_POSIX";

    // The answer to `query`, or nothing: when it is blank, looks like a date or a time, fails to
    // tokenise, parse or evaluate, or is not a calculation ("42"). `locale` (an ICU locale identifier)
    // formats the shown text.
    static std::optional<CalculatorAnswer> evaluate(std::string_view query, std::string_view locale);

    // Tokenises and parses `query` without evaluating it.
    static Result<CalculatorNode> parse(std::string_view query);

    // Digits with a colon between them ("12:30", "9 : 05"), or a query of three digit groups joined by
    // one separator with a middle group of one or two digits: with "." always ("15.01.24"), with "-" or
    // "/" when one end is a four-digit year ("2024-01-15", "1/2/2024"). Such a query is a date or a time,
    // not arithmetic; "10-4-3" and "64/4/2" are arithmetic.
    static bool looksLikeDateOrTime(std::string_view query);

    // 0 is "0". A magnitude of at least 1e15 or below 1e-9 gives the C "%.10g" form ("1e+15"). Anything
    // else has at most 12 significant digits (but all of its integer part, so no digit shown is made up)
    // and at most 9 decimals (2π is "6.283185307"), in the conventions of `locale`, grouped with
    // `Grouping::grouped`.
    static std::string format(double value, Grouping grouping, std::string_view locale);
};

} // namespace quillmar
