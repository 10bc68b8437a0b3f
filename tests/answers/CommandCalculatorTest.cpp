#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "core/answers/CalculatorTokenizer.h"
#include "core/answers/CommandCalculator.h"

namespace quillmar {
namespace {

std::optional<std::string> copied(std::string_view query)
{
    auto answer = CommandCalculator::evaluate(query, "en_US");
    if (!answer)
        return std::nullopt;
    return answer->copyText;
}

struct AnswerRow {
    const char* name;
    const char* query;
    std::optional<std::string> expected; // the copied text, or no answer
};

class CalculatorAnswers : public testing::TestWithParam<AnswerRow> { };

TEST_P(CalculatorAnswers, Evaluates)
{
    EXPECT_EQ(copied(GetParam().query), GetParam().expected) << GetParam().query;
}

INSTANTIATE_TEST_SUITE_P(Precedence, CalculatorAnswers,
    testing::Values(
        AnswerRow { "productBeforeSum", "2+3*4", "14" },
        AnswerRow { "bracketsFirst", "(2+3)*4", "20" },
        AnswerRow { "subtractionIsLeftAssociative", "10-4-3", "3" },
        AnswerRow { "divisionIsLeftAssociative", "64/4/2", "8" },
        AnswerRow { "powerIsRightAssociative", "2^3^2", "512" },
        AnswerRow { "negationBindsLooserThanPower", "-2^2", "-4" },
        AnswerRow { "negativeExponent", "2^-1", "0.5" },
        AnswerRow { "bracketedNegativeBase", "(-2)^2", "4" },
        AnswerRow { "doubleNegation", "--3+1", "4" },
        AnswerRow { "unaryPlus", "+3*+2", "6" },
        AnswerRow { "factorialBeforePower", "2^3!", "64" },
        AnswerRow { "squareAndCurlyBrackets", "[1+2]*{3+1}", "12" }),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(ImplicitMultiplication, CalculatorAnswers,
    testing::Values(
        AnswerRow { "numberAndConstant", "2π", "6.283185307" },
        AnswerRow { "numberAndName", "2pi", "6.283185307" },
        AnswerRow { "numberAndBracket", "3(4+1)", "15" },
        AnswerRow { "bracketAndBracket", "(1+1)(2+2)", "8" },
        AnswerRow { "bracketAndNumber", "(1+2)3", "9" },
        AnswerRow { "numberAndCall", "2sqrt(9)", "6" },
        AnswerRow { "bindsLikeAProduct", "1+2(3)", "7" },
        AnswerRow { "numberAndNameAcrossASpace", "2 pi", "6.283185307" },
        AnswerRow { "numberAndBracketAcrossASpace", "3 (4+1)", "15" },
        AnswerRow { "exponentNeedsDigitsSoTheEIsEuler", "2e", "5.436563657" }),
    [](const auto& row) { return std::string(row.param.name); });

// Many locales write 12 500 for 12,500: reading it as 12 × 500 would answer wrongly, so spaced groups
// are one number and any other number beside a number gets no answer.
INSTANTIATE_TEST_SUITE_P(SpacedNumbers, CalculatorAnswers,
    testing::Values(
        AnswerRow { "spaceGroupedDividend", "12 500 / 5", "2500" },
        AnswerRow { "spaceGroupedMillion", "1 000 000 / 4", "250000" },
        AnswerRow { "narrowNoBreakSpaces", "1\u202f234\u202f567 + 0.5", "1234567.5" },
        AnswerRow { "spaceGroupsThenFraction", "1 234.5 * 2", "2469" },
        AnswerRow { "spaceGroupsInsideACall", "max(1 000, 2)", "1000" },
        AnswerRow { "groupsTooShort", "12 34", std::nullopt },
        AnswerRow { "groupTooLong", "1 0000", std::nullopt },
        AnswerRow { "leadingGroupTooLong", "1234 567 + 1", std::nullopt },
        AnswerRow { "twoSpaces", "1  000 + 1", std::nullopt },
        AnswerRow { "commaThenSpaceGroups", "1,000 000 + 1", std::nullopt },
        AnswerRow { "twoPlainNumbers", "2 3", std::nullopt },
        AnswerRow { "numbersTouching", "1.5.5 + 1", std::nullopt }),
    [](const auto& row) { return std::string(row.param.name); });

TEST(CommandCalculator, SpaceGroupedNumberIsOneNumber)
{
    struct Row {
        const char* query;
        double value;
    };
    for (const auto& row : { Row { "1 000 000", 1000000 }, Row { "1 000", 1000 }, Row { "-12 500", -12500 } }) {
        auto tree = CommandCalculator::parse(row.query);
        ASSERT_TRUE(tree) << row.query;
        EXPECT_FALSE(tree->isCalculation()) << row.query << " is a lone number, not a calculation";
        auto value = tree->evaluate();
        ASSERT_TRUE(value) << row.query;
        EXPECT_EQ(*value, row.value) << row.query;
    }
}

INSTANTIATE_TEST_SUITE_P(Percent, CalculatorAnswers,
    testing::Values(
        AnswerRow { "remainderBetweenOperands", "10 % 3", "1" },
        AnswerRow { "remainderBeforeBracket", "10%(4)", "2" },
        AnswerRow { "remainderIsFloating", "7.5 % 2", "1.5" },
        AnswerRow { "addedPercentageOfLeftSide", "200 + 10%", "220" },
        AnswerRow { "subtractedPercentageOfLeftSide", "200 - 10%", "180" },
        AnswerRow { "percentageTimes", "50% * 8", "4" },
        AnswerRow { "lonePercentage", "5%", "0.05" },
        AnswerRow { "remainderByZero", "5 % 0", std::nullopt }),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(Functions, CalculatorAnswers,
    testing::Values(
        AnswerRow { "logWithBase", "log(8, 2)", "3" },
        AnswerRow { "logBaseTen", "log(1000)", "3" },
        AnswerRow { "logBaseOneIsOutsideTheDomain", "log(8, 1)", std::nullopt },
        AnswerRow { "lnOfZero", "ln(0)", std::nullopt },
        AnswerRow { "log2", "log2(1024)", "10" },
        AnswerRow { "roundToPlaces", "round(3.14159, 2)", "3.14" },
        AnswerRow { "roundPlacesAreClamped", "round(2.5, -3)", "3" },
        AnswerRow { "roundToInteger", "round(2.5)", "3" },
        AnswerRow { "sqrtOfNegative", "sqrt(-1)", std::nullopt },
        AnswerRow { "cbrtOfNegative", "cbrt(-27)", "-3" },
        AnswerRow { "sineTakesRadians", "sin(pi/2)", "1" },
        AnswerRow { "sineOfPiIsZeroNotRoundingNoise", "sin(pi)", "0" },
        AnswerRow { "cosineOfHalfPiIsZero", "cos(pi/2)", "0" },
        AnswerRow { "sineOfATinyAngleIsKept", "sin(1e-20) * 1e20", "1" },
        AnswerRow { "degreesSymbolConverts", "sin(30°)", "0.5" },
        AnswerRow { "degAndRad", "deg(rad(90))", "90" },
        AnswerRow { "minOfMany", "min(4, 2, 8)", "2" },
        AnswerRow { "maxOfOne", "max(7)", "7" },
        AnswerRow { "maxKeepsCommaArguments", "max(1,2)", "2" },
        AnswerRow { "noGroupingInsideACall", "max(1,000)", "1" },
        AnswerRow { "groupingInsidePlainBrackets", "max((1,000), 2)", "1000" },
        AnswerRow { "pow", "pow(2, 10)", "1024" },
        AnswerRow { "namesIgnoreCase", "SQRT(16) + PI - pi", "4" },
        AnswerRow { "unknownFunction", "foo(2)", std::nullopt },
        AnswerRow { "unknownName", "2x", std::nullopt },
        AnswerRow { "wrongArgumentCount", "sqrt(1, 2)", std::nullopt },
        AnswerRow { "noArguments", "max()", std::nullopt },
        AnswerRow { "goldenRatio", "phi^2 - phi", "1" },
        AnswerRow { "tau", "τ/2", "3.141592654" }),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(Limits, CalculatorAnswers,
    testing::Values(
        AnswerRow { "factorialOfSeventeen", "17!", "355687428096000" },
        AnswerRow { "factorialOf170IsInExponentForm", "170!", "7.257415615e+306" },
        AnswerRow { "factorialOf171Overflows", "171!", std::nullopt },
        AnswerRow { "factorialOfNegative", "(-1)!", std::nullopt },
        AnswerRow { "factorialOfFraction", "2.5!", std::nullopt },
        AnswerRow { "factFunction", "fact(5)", "120" },
        AnswerRow { "divisionByZero", "1/0", std::nullopt },
        AnswerRow { "overflowToInfinity", "10^400", std::nullopt },
        AnswerRow { "noRealRoot", "(-8)^(1/3)", std::nullopt }),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(NotCalculations, CalculatorAnswers,
    testing::Values(
        AnswerRow { "bareNumber", "42", std::nullopt },
        AnswerRow { "negatedNumber", "-42", std::nullopt },
        AnswerRow { "bracketedNumber", "(42)", std::nullopt },
        AnswerRow { "bareConstant", "pi", std::nullopt },
        AnswerRow { "bareHexadecimal", "0xff", std::nullopt },
        AnswerRow { "time", "12:30", std::nullopt },
        AnswerRow { "empty", "   ", std::nullopt },
        AnswerRow { "word", "safari", std::nullopt },
        AnswerRow { "danglingOperator", "2+", std::nullopt },
        AnswerRow { "unclosedBracket", "(2+3", std::nullopt },
        AnswerRow { "strayClosingBracket", "2+3)", std::nullopt },
        AnswerRow { "unknownCharacter", "2 & 3", std::nullopt },
        AnswerRow { "brokenGrouping", "1,2", std::nullopt },
        AnswerRow { "doublePoint", "1.2.3", std::nullopt }),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(Notation, CalculatorAnswers,
    testing::Values(
        AnswerRow { "hexadecimalInArithmetic", "0xff + 1", "256" },
        AnswerRow { "exponent", "1.5e3 * 2", "3000" },
        AnswerRow { "negativeExponentDigits", "2.5E-2*4", "0.1" },
        AnswerRow { "leadingPoint", ".5 + .25", "0.75" },
        AnswerRow { "groupedMillion", "1,000,000 / 4", "250000" },
        AnswerRow { "groupedWithFraction", "1,234.5 + 0.5", "1235" },
        AnswerRow { "words", "3 plus 4 times 2 minus 1", "10" },
        AnswerRow { "typographicOperators", "6 × 7 ÷ 2 · 2 − 1", "41" },
        AnswerRow { "roundingNoise", "0.1 + 0.2", "0.3" },
        AnswerRow { "twelveSignificantDigits", "1/3 * 1000", "333.333333333" },
        AnswerRow { "nineDecimals", "1/3", "0.333333333" },
        AnswerRow { "negativeZeroIsZero", "-0 * 1", "0" }),
    [](const auto& row) { return std::string(row.param.name); });

TEST(CommandCalculator, ShownTextIsGroupedInTheUsersLocaleAndCopiedTextIsPlain)
{
    struct Row {
        const char* locale;
        const char* shown;
    };
    for (const auto& row : { Row { "en_US", "1,234,567.5" }, Row { "de_DE", "1.234.567,5" },
             Row { "fr_FR", "1\u202f234\u202f567,5" } }) {
        auto answer = CommandCalculator::evaluate("1234567 + 0.5", row.locale);
        ASSERT_TRUE(answer) << row.locale;
        EXPECT_EQ(answer->text, row.shown) << row.locale;
        EXPECT_EQ(answer->copyText, "1234567.5") << row.locale;
        EXPECT_DOUBLE_EQ(answer->value, 1234567.5);
    }
}

TEST(CommandCalculator, FormatSwitchesToExponentFormAtTheEdges)
{
    EXPECT_EQ(CommandCalculator::format(0, Grouping::grouped, "en_US"), "0");
    EXPECT_EQ(CommandCalculator::format(999999999999999, Grouping::grouped, "en_US"), "999,999,999,999,999");
    EXPECT_EQ(CommandCalculator::format(1e15, Grouping::grouped, "en_US"), "1e+15");
    EXPECT_EQ(CommandCalculator::format(-2.5e20, Grouping::none, "en_US_POSIX"), "-2.5e+20");
    EXPECT_EQ(CommandCalculator::format(1e-9, Grouping::none, "en_US_POSIX"), "0.000000001");
    EXPECT_EQ(CommandCalculator::format(9.99e-10, Grouping::none, "en_US_POSIX"), "9.99e-10");
    EXPECT_EQ(CommandCalculator::format(123456789.123456, Grouping::none, "en_US_POSIX"), "123456789.123");
    // Beyond 12 digits the integer part is still shown whole: no digit is made up.
    EXPECT_EQ(CommandCalculator::format(123456789012345.6, Grouping::grouped, "en_US"), "123,456,789,012,346");
}

TEST(CommandCalculator, NestingIsBoundedBeforeEvaluation)
{
    auto nested = [](int depth) {
        return std::string(static_cast<std::size_t>(depth), '(') + "1+1" + std::string(static_cast<std::size_t>(depth), ')');
    };
    EXPECT_EQ(copied(nested(199)), "2");
    EXPECT_EQ(copied(nested(200)), std::nullopt);

    auto tooDeep = CommandCalculator::parse(nested(200));
    ASSERT_FALSE(tooDeep);
    EXPECT_EQ(calculatorFailure(tooDeep.error()), CalculatorFailure::tooComplex);

    // A tree deeper than evaluation allows is refused while parsing, whatever the brackets.
    std::string chain = "1";
    for (int i = 0; i < 250; ++i)
        chain += "+1";
    auto longChain = CommandCalculator::parse(chain);
    ASSERT_FALSE(longChain);
    EXPECT_EQ(calculatorFailure(longChain.error()), CalculatorFailure::tooComplex);
    EXPECT_EQ(copied(chain.substr(0, 2 * 199 + 1)), "200") << "a sum of 200 ones is 199 levels deep";
}

TEST(CommandCalculator, HostileInputGivesNoAnswerWithoutExhaustingTheStack)
{
    for (const auto& query : { std::string(100000, '('), std::string(100000, '-') + "1",
             "2" + std::string(100000, '!'), std::string(100000, '+') + "1", [] {
                 std::string powers = "2";
                 for (int i = 0; i < 50000; ++i)
                     powers += "^2";
                 return powers;
             }() }) {
        EXPECT_EQ(copied(query), std::nullopt) << query.substr(0, 10);
    }
}

TEST(CommandCalculator, FailuresNameTheirKind)
{
    struct Row {
        const char* query;
        CalculatorFailure failure;
        const char* name;
    };
    for (const auto& row : { Row { "2 * foo", CalculatorFailure::unknown, "foo" },
             Row { "frob(1)", CalculatorFailure::unknown, "frob" }, Row { "2 $ 3", CalculatorFailure::syntax, "" },
             Row { "1/0", CalculatorFailure::domain, "" }, Row { "sqrt()", CalculatorFailure::domain, "sqrt" } }) {
        auto tree = CommandCalculator::parse(row.query);
        auto value = tree ? tree->evaluate() : Result<double>(std::move(tree).error());
        ASSERT_FALSE(value) << row.query;
        EXPECT_EQ(calculatorFailure(value.error()), row.failure) << row.query;
        EXPECT_EQ(value.error().context, row.name) << row.query;
    }
}

TEST(CommandCalculator, LooksLikeDateOrTime)
{
    for (const char* query : { "12:30", "9 : 05", "2024-01-15", "15.01.2024", "1/2/2024", "2024/1/2", "15.1.24", "x 10:00" })
        EXPECT_TRUE(CommandCalculator::looksLikeDateOrTime(query)) << query;
    for (const char* query : { "12/30", "10-4-3", "64/4/2", "2024-01", "1-2-3-4", "1/2-2024", "12345/1/1", "2024/123/1", "a:b", "3 + 4" })
        EXPECT_FALSE(CommandCalculator::looksLikeDateOrTime(query)) << query;
}

struct ReadRow {
    const char* name;
    std::u32string_view text;
    Grouping grouping;
    std::optional<NumberReading> expected;
};

class ReadNumber : public testing::TestWithParam<ReadRow> { };

TEST_P(ReadNumber, Reads)
{
    EXPECT_EQ(CalculatorTokenizer::readNumber(GetParam().text, GetParam().grouping), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Table, ReadNumber,
    testing::Values(
        ReadRow { "integer", U"42+", Grouping::grouped, NumberReading { 42, 2 } },
        ReadRow { "decimal", U"3.25)", Grouping::grouped, NumberReading { 3.25, 4 } },
        ReadRow { "onlyOneDecimalPoint", U"1.2.3", Grouping::grouped, NumberReading { 1.2, 3 } },
        ReadRow { "trailingPoint", U"5.", Grouping::grouped, NumberReading { 5, 2 } },
        ReadRow { "exponentWithSign", U"1e-3", Grouping::grouped, NumberReading { 0.001, 4 } },
        ReadRow { "exponentWithPlus", U"2E+2", Grouping::grouped, NumberReading { 200, 4 } },
        ReadRow { "eWithoutDigitsIsLeft", U"2e+", Grouping::grouped, NumberReading { 2, 1 } },
        ReadRow { "hexadecimal", U"0x1F", Grouping::grouped, NumberReading { 31, 4 } },
        ReadRow { "hexadecimalNeedsADigit", U"0xg", Grouping::grouped, NumberReading { 0, 1 } },
        ReadRow { "groups", U"1,000,000", Grouping::grouped, NumberReading { 1000000, 9 } },
        ReadRow { "groupsNotAllowed", U"1,000", Grouping::none, NumberReading { 1, 1 } },
        ReadRow { "shortGroupEndsTheNumber", U"12,34", Grouping::grouped, NumberReading { 12, 2 } },
        ReadRow { "longGroupEndsTheNumber", U"1,0000", Grouping::grouped, NumberReading { 1, 1 } },
        ReadRow { "leadingGroupTooLong", U"1234,567", Grouping::grouped, NumberReading { 1234, 4 } },
        ReadRow { "badSecondGroupKeepsTheFirst", U"1,000,00", Grouping::grouped, NumberReading { 1000, 5 } },
        ReadRow { "groupsThenFraction", U"9,999.5", Grouping::grouped, NumberReading { 9999.5, 7 } },
        ReadRow { "spaceGroups", U"12 500 /", Grouping::none, NumberReading { 12500, 6 } },
        ReadRow { "shortSpaceGroupEndsTheNumber", U"12 34", Grouping::grouped, NumberReading { 12, 2 } },
        ReadRow { "separatorsDoNotMix", U"1 000,000", Grouping::grouped, NumberReading { 1000, 5 } },
        ReadRow { "notANumber", U"x1", Grouping::grouped, std::nullopt },
        ReadRow { "lonePoint", U".x", Grouping::grouped, std::nullopt },
        ReadRow { "outOfRange", U"1e999", Grouping::grouped, std::nullopt }),
    [](const auto& row) { return std::string(row.param.name); });

TEST(CalculatorTokenizer, ReplacesWordsAndSymbolsAndLowerCasesNames)
{
    auto tokens = CalculatorTokenizer::tokenize("Sqrt[2] times 3 ÷ π");
    ASSERT_TRUE(tokens);
    using Token = CalculatorToken;
    EXPECT_EQ(*tokens, (std::vector<Token> { Token::makeIdentifier("sqrt"), Token::makeSymbol(U'('),
                           Token::makeNumber(2), Token::makeSymbol(U')'), Token::makeSymbol(U'*'),
                           Token::makeNumber(3), Token::makeSymbol(U'/'), Token::makeIdentifier("π") }));
    EXPECT_FALSE(CalculatorTokenizer::tokenize("2 = 2"));
    EXPECT_FALSE(CalculatorTokenizer::tokenize("1e999 + 1"));
}

} // namespace
} // namespace quillmar
