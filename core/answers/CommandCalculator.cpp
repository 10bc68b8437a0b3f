#include "core/answers/CommandCalculator.h"

#include <cmath>
#include <vector>

#include "core/answers/CalculatorTokenizer.h"
#include "core/base/Text.h"

namespace quillmar {

namespace {

constexpr int significantDigits = 12;
constexpr int fractionDigits = 9;

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

bool hasColonBetweenDigits(std::string_view text)
{
    for (std::size_t colon = text.find(':'); colon != std::string_view::npos; colon = text.find(':', colon + 1)) {
        auto before = trimmed(text.substr(0, colon));
        auto after = trimmed(text.substr(colon + 1));
        if (!before.empty() && isDigit(before.back()) && !after.empty() && isDigit(after.front()))
            return true;
    }
    return false;
}

// Three digit groups joined by one separator, the middle one of one or two digits. With "-" or "/" one
// end must be a four-digit year, since "10-4-3" and "64/4/2" are ordinary arithmetic.
bool isDateLike(std::string_view text)
{
    std::vector<std::size_t> lengths;
    char separator = 0;
    std::size_t index = 0;
    while (true) {
        std::size_t start = index;
        while (index < text.size() && isDigit(text[index]))
            ++index;
        if (index == start || index - start > 4)
            return false;
        lengths.push_back(index - start);
        if (index == text.size())
            break;
        char here = text[index];
        if ((here != '-' && here != '/' && here != '.') || (separator != 0 && here != separator))
            return false;
        separator = here;
        ++index;
    }
    if (lengths.size() != 3 || lengths[1] > 2)
        return false;
    return separator == '.' || lengths.front() == 4 || lengths.back() == 4;
}

} // namespace

Result<CalculatorNode> CommandCalculator::parse(std::string_view query)
{
    QUILLMAR_TRY_ASSIGN(auto tokens, CalculatorTokenizer::tokenize(query));
    return CalculatorParser(tokens).parse();
}

std::optional<CalculatorAnswer> CommandCalculator::evaluate(std::string_view query, std::string_view locale)
{
    query = trimmed(query);
    if (query.empty() || looksLikeDateOrTime(query))
        return std::nullopt;
    auto tree = parse(query);
    if (!tree || !tree->isCalculation())
        return std::nullopt;
    auto value = tree->evaluate();
    if (!value)
        return std::nullopt;
    return CalculatorAnswer { *value, format(*value, Grouping::grouped, locale),
        format(*value, Grouping::none, copyLocale) };
}

bool CommandCalculator::looksLikeDateOrTime(std::string_view query)
{
    query = trimmed(query);
    return hasColonBetweenDigits(query) || isDateLike(query);
}

std::string CommandCalculator::format(double value, Grouping grouping, std::string_view locale)
{
    if (value == 0)
        return "0";
    double magnitude = std::fabs(value);
    if (magnitude >= 1e15 || magnitude < 1e-9)
        return generalText(value, 10);
    return decimalText(value, significantDigits, fractionDigits, grouping, locale);
}

} // namespace quillmar
