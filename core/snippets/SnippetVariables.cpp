#include "core/snippets/SnippetVariables.h"

#include <memory>

#include <unicode/datefmt.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

#include "core/snippets/Graphemes.h"

namespace quillmar::SnippetVariables {

namespace {

icu::UnicodeString unicode(std::string_view text)
{
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
}

std::unique_ptr<icu::TimeZone> makeZone(std::string_view name)
{
    if (name.empty())
        return std::unique_ptr<icu::TimeZone>(icu::TimeZone::createDefault());
    return std::unique_ptr<icu::TimeZone>(icu::TimeZone::createTimeZone(unicode(name)));
}

icu::Locale makeLocale(std::string_view identifier)
{
    if (identifier.empty())
        return icu::Locale::getDefault();
    return icu::Locale::createCanonical(std::string(identifier).c_str());
}

// Formats dates for one expansion: the locale and zone are set up once.
class DateFormatter final {
public:
    DateFormatter(WallTime now, std::string_view locale, std::string_view timeZone)
        : m_date(static_cast<UDate>(std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count()))
        , m_locale(makeLocale(locale))
        , m_zone(makeZone(timeZone))
    {
    }

    std::optional<std::string> withPattern(std::string_view pattern) const
    {
        UErrorCode status = U_ZERO_ERROR;
        icu::SimpleDateFormat format(unicode(pattern), m_locale, status);
        if (U_FAILURE(status))
            return std::nullopt;
        return run(format);
    }

    std::optional<std::string> withStyle(icu::DateFormat::EStyle dateStyle, icu::DateFormat::EStyle timeStyle) const
    {
        std::unique_ptr<icu::DateFormat> format(icu::DateFormat::createDateTimeInstance(dateStyle, timeStyle, m_locale));
        if (!format)
            return std::nullopt;
        return run(*format);
    }

private:
    std::optional<std::string> run(icu::DateFormat& format) const
    {
        format.setTimeZone(*m_zone);
        icu::UnicodeString formatted;
        format.format(m_date, formatted);
        std::string text;
        formatted.toUTF8String(text);
        return text;
    }

    UDate m_date;
    icu::Locale m_locale;
    std::unique_ptr<icu::TimeZone> m_zone;
};

} // namespace

bool isKnownTimeZone(std::string_view timeZone)
{
    if (timeZone.empty())
        return false;
    auto zone = makeZone(timeZone);
    icu::UnicodeString id;
    zone->getID(id);
    return id != icu::UnicodeString(u"Etc/Unknown");
}

Expansion expand(std::string_view text, WallTime now, std::string_view locale, std::string_view timeZone,
    const std::optional<std::string>& clipboard)
{
    DateFormatter dates(now, locale, timeZone);
    std::string output;
    std::optional<std::size_t> cursorByte;
    std::size_t index = 0;
    while (index < text.size()) {
        char character = text[index];
        if (character != '{') {
            output += character;
            ++index;
            continue;
        }
        auto close = text.find('}', index + 1);
        auto nextOpen = text.find('{', index + 1);
        if (close == std::string_view::npos || (nextOpen != std::string_view::npos && nextOpen < close)) {
            output += character;
            ++index;
            continue;
        }
        auto inner = text.substr(index + 1, close - index - 1);
        auto colon = inner.find(':');
        auto name = inner.substr(0, colon);
        std::optional<std::string_view> argument;
        if (colon != std::string_view::npos)
            argument = inner.substr(colon + 1);

        std::optional<std::string> replacement;
        bool takesPattern = name == "date" || name == "time" || name == "datetime";
        if (takesPattern && argument && !argument->empty()) {
            replacement = dates.withPattern(*argument);
        } else if (takesPattern) {
            if (name == "date")
                replacement = dates.withStyle(icu::DateFormat::kMedium, icu::DateFormat::kNone);
            else if (name == "time")
                replacement = dates.withStyle(icu::DateFormat::kNone, icu::DateFormat::kShort);
            else
                replacement = dates.withStyle(icu::DateFormat::kMedium, icu::DateFormat::kShort);
        } else if (!argument && name == "weekday") {
            replacement = dates.withPattern("EEEE");
        } else if (!argument && name == "clipboard") {
            replacement = clipboard.value_or("");
        } else if (!argument && name == "cursor") {
            if (!cursorByte)
                cursorByte = output.size();
            replacement = std::string();
        }
        if (!replacement) {
            output += character;
            ++index;
            continue;
        }
        output += *replacement;
        index = close + 1;
    }
    Expansion expansion;
    expansion.cursor = cursorByte ? graphemeCount(std::string_view(output).substr(0, *cursorByte)) : graphemeCount(output);
    expansion.text = std::move(output);
    return expansion;
}

} // namespace quillmar::SnippetVariables
