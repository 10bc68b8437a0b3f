#include "core/agents/AgentPricing.h"

#include <array>
#include <cmath>
#include <cstdlib>

#include <fmt/format.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include "core/base/Diagnostics.h"
#include "core/base/Text.h"

namespace quillmar {

namespace {

bool isAsciiSpace(char character)
{
    return character == ' ' || character == '\t' || character == '\n' || character == '\v' || character == '\f'
        || character == '\r';
}

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

bool allDigits(std::string_view text)
{
    for (char character : text) {
        if (!isDigit(character))
            return false;
    }
    return true;
}

// Model names are ASCII in practice, so that path allocates only the result; anything else goes
// through ICU, whose full lower-casing may turn a non-ASCII letter into an ASCII one (KELVIN SIGN).
std::string trimmedLowerCase(std::string_view name)
{
    bool ascii = true;
    for (char character : name)
        ascii = ascii && static_cast<unsigned char>(character) < 0x80;
    if (ascii) {
        while (!name.empty() && isAsciiSpace(name.front()))
            name.remove_prefix(1);
        while (!name.empty() && isAsciiSpace(name.back()))
            name.remove_suffix(1);
        return asciiLower(name);
    }
    auto text = icu::UnicodeString::fromUTF8(icu::StringPiece(name.data(), static_cast<std::int32_t>(name.size())));
    std::int32_t start = 0;
    std::int32_t end = text.length();
    while (start < end && u_isUWhiteSpace(text.char32At(start)))
        start = text.moveIndex32(start, 1);
    while (end > start && u_isUWhiteSpace(text.char32At(end - 1)))
        end = text.moveIndex32(end, -1);
    icu::UnicodeString trimmed(text, start, end - start);
    trimmed.toLower(icu::Locale::getRoot());
    std::string lower;
    trimmed.toUTF8String(lower);
    return lower;
}

std::string_view afterLast(std::string_view text, char separator)
{
    auto position = text.rfind(separator);
    return position == std::string_view::npos ? text : text.substr(position + 1);
}

std::string_view beforeFirst(std::string_view text, char separator)
{
    return text.substr(0, text.find(separator));
}

// Dots and underscores become "-" before the split, so all three separate segments.
bool isSeparator(char character)
{
    return character == '-' || character == '.' || character == '_';
}

// The next non-empty segment at or after `position`; empty at the end.
std::string_view nextSegment(std::string_view text, std::size_t& position)
{
    while (position < text.size() && isSeparator(text[position]))
        ++position;
    auto start = position;
    while (position < text.size() && !isSeparator(text[position]))
        ++position;
    return text.substr(start, position - start);
}

std::int64_t addOrStop(std::int64_t a, std::int64_t b)
{
    std::int64_t sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) {
        diagnostic("agents: prompt-side token sum overflows 64 bits ({} + {})", a, b);
        std::abort();
    }
    return sum;
}

} // namespace

std::string AgentPricing::normalize(std::string_view model)
{
    auto text = trimmedLowerCase(model);
    std::string_view name = afterLast(text, '/');
    for (std::string_view prefix : { "us.anthropic.", "eu.anthropic.", "apac.anthropic.", "global.anthropic.",
             "anthropic.", "openai." }) {
        if (name.starts_with(prefix))
            name.remove_prefix(prefix.size());
    }
    name = beforeFirst(name, '[');
    name = beforeFirst(name, '@');
    name = beforeFirst(name, ':');

    // The kept segments are written back into `text` from its start; the write position never passes
    // the read position, so the one string holds the result.
    std::size_t written = 0;
    std::size_t kept = 0;
    auto keep = [&](std::string_view segment) {
        if (kept > 0)
            text[written++] = '-';
        for (char character : segment)
            text[written++] = character;
        ++kept;
    };
    std::size_t position = 0;
    for (auto segment = nextSegment(name, position); !segment.empty(); segment = nextSegment(name, position)) {
        if (segment.size() == 8 && allDigits(segment))
            continue;
        if (segment.size() == 4 && allDigits(segment)) {
            auto lookahead = position;
            auto month = nextSegment(name, lookahead);
            auto day = nextSegment(name, lookahead);
            if (month.size() == 2 && day.size() == 2) {
                position = lookahead;
                continue;
            }
        }
        if (segment == "latest")
            continue;
        if (segment.starts_with("v1") && segment.size() <= 3 && kept >= 2)
            continue;
        keep(segment);
    }
    text.resize(written);
    return text;
}

const AgentPricing::Rate* AgentPricing::rate(std::string_view model)
{
    auto key = normalize(model);
    if (key.empty())
        return nullptr;
    const Rate* best = nullptr;
    for (const auto& row : table()) {
        std::string_view family = row.family;
        bool candidate = key == family;
        if (!candidate && key.size() > family.size() + 1 && key.starts_with(family) && key[family.size()] == '-') {
            std::string_view rest = std::string_view(key).substr(family.size() + 1);
            auto next = beforeFirst(rest, '-');
            candidate = !next.empty() && !allDigits(next);
        }
        if (candidate && (!best || family.size() > best->family.size()))
            best = &row;
    }
    return best;
}

bool AgentPricing::promptSideFits(const UsageRecord& record)
{
    std::int64_t sum = 0;
    for (auto tokens : { record.input, record.cacheRead, record.cacheWrite, record.cacheWrite1h }) {
        if (__builtin_add_overflow(sum, tokens, &sum))
            return false;
    }
    return true;
}

std::optional<double> AgentPricing::cost(const UsageRecord& record)
{
    const auto* row = rate(record.model);
    if (!row)
        return record.recordedCost;

    auto promptSide = addOrStop(addOrStop(addOrStop(record.input, record.cacheRead), record.cacheWrite),
        record.cacheWrite1h);
    double inputFactor = 1;
    double outputFactor = 1;
    if (row->longContextAbove && promptSide > *row->longContextAbove) {
        inputFactor = row->longInputMultiplier;
        outputFactor = row->longOutputMultiplier;
    }
    auto tokens = [](std::int64_t count) { return static_cast<double>(count); };
    double dollars = (tokens(record.input) * row->input * inputFactor
                         + tokens(record.cacheRead) * row->cacheRead * inputFactor
                         + tokens(record.cacheWrite) * row->cacheWrite * inputFactor
                         + tokens(record.cacheWrite1h) * row->cacheWrite1h * inputFactor
                         + tokens(record.output) * row->output * outputFactor)
        / 1'000'000.0;
    if (record.fast)
        dollars *= row->fastMultiplier;
    if (record.usOnly)
        dollars *= 1.1;
    dollars += tokens(record.webSearches) * 0.01;
    if (!std::isfinite(dollars) || dollars < 0)
        return 0.0;
    return dollars;
}

std::string AgentPricing::words(double dollars)
{
    if (!std::isfinite(dollars))
        return "—";
    if (dollars == 0)
        return "$0.00";
    std::string sign = dollars < 0 ? "-" : "";
    auto digits = fmt::format("{:.2f}", std::fabs(dollars));
    if (digits == "0.00")
        return sign + "<$0.01";
    auto point = digits.find('.');
    std::string grouped;
    for (std::size_t i = 0; i < point; ++i) {
        if (i > 0 && (point - i) % 3 == 0)
            grouped += ',';
        grouped += digits[i];
    }
    return sign + "$" + grouped + digits.substr(point);
}

} // namespace quillmar
