#include "core/answers/CommandTimeZones.h"

#include <array>
#include <chrono>
#include <unordered_map>
#include <vector>

#include <unicode/calendar.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include "core/answers/IcuText.h"
#include "core/answers/TimeZoneTables.h"

namespace quillmar {

namespace {

using Words = std::vector<std::string>;

// Leading words that ask for the current time at the place that follows.
const std::array<Words, 6> currentTimePrefixes { {
    { "what", "time", "is", "it", "in" },
    { "what's", "the", "time", "in" },
    { "current", "time", "in" },
    { "time", "in" },
    { "time", "at" },
    { "now", "in" },
} };

bool isConnector(std::string_view word)
{
    return word == "in" || word == "to";
}

std::string lowerCase(std::string_view text)
{
    auto unicode = icuString(text);
    unicode.toLower(icu::Locale::getRoot());
    return utf8String(unicode);
}

Words splitWords(std::string_view text)
{
    Words words;
    std::string current;
    for (char character : text) {
        if (character == ' ' || character == '\t' || character == '\n' || character == '\r') {
            if (!current.empty())
                words.push_back(std::move(current));
            current.clear();
        } else {
            current += character;
        }
    }
    if (!current.empty())
        words.push_back(std::move(current));
    return words;
}

std::string joined(const Words& words, std::size_t begin, std::size_t end)
{
    std::string text;
    for (std::size_t index = begin; index < end && index < words.size(); ++index) {
        if (!text.empty())
            text += ' ';
        text += words[index];
    }
    return text;
}

UDate icuDate(WallTime time)
{
    return std::chrono::duration<double, std::milli>(time.time_since_epoch()).count();
}

WallTime wallTime(UDate date)
{
    return WallTime(std::chrono::duration_cast<WallTime::duration>(std::chrono::duration<double, std::milli>(date)));
}

std::unique_ptr<icu::TimeZone> makeZone(std::string_view identifier)
{
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(icuString(identifier)));
    if (!zone || *zone == icu::TimeZone::getUnknown())
        return nullptr;
    return zone;
}

// Loading a zone's rules and building a date format cost far more than using them, and an answer needs
// several of each on every keystroke, so each thread keeps the ones it has used (small caches, cleared
// when full).
constexpr std::size_t maximumCached = 32;

const icu::TimeZone* cachedZone(const std::string& identifier)
{
    thread_local std::unordered_map<std::string, std::unique_ptr<icu::TimeZone>> zones;
    auto found = zones.find(identifier);
    if (found != zones.end())
        return found->second.get();
    auto zone = makeZone(identifier);
    if (!zone)
        return nullptr;
    if (zones.size() >= maximumCached)
        zones.clear();
    return zones.emplace(identifier, std::move(zone)).first->second.get();
}

icu::SimpleDateFormat* cachedFormat(std::string_view pattern, const char* locale)
{
    thread_local std::unordered_map<std::string, std::unique_ptr<icu::SimpleDateFormat>> formats;
    auto key = std::string(pattern) + "|" + locale;
    auto found = formats.find(key);
    if (found != formats.end())
        return found->second.get();
    UErrorCode status = U_ZERO_ERROR;
    auto format = std::make_unique<icu::SimpleDateFormat>(icuString(pattern), icu::Locale(locale), status);
    if (U_FAILURE(status))
        return nullptr;
    if (formats.size() >= maximumCached)
        formats.clear();
    return formats.emplace(std::move(key), std::move(format)).first->second.get();
}

// `instant` in `zone` through an ICU date pattern; empty when the zone or pattern is not usable.
std::string formatted(std::string_view pattern, const NamedZone& zone, WallTime instant, const char* locale)
{
    const auto* icuZone = cachedZone(zone.identifier);
    auto* format = cachedFormat(pattern, locale);
    if (!icuZone || !format)
        return {};
    format->setTimeZone(*icuZone);
    icu::UnicodeString text;
    format->format(icuDate(instant), text);
    return utf8String(text);
}

std::unique_ptr<icu::Calendar> calendarIn(const NamedZone& zone, WallTime instant)
{
    const auto* icuZone = cachedZone(zone.identifier);
    if (!icuZone)
        return nullptr;
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Calendar> calendar(icu::Calendar::createInstance(*icuZone, icu::Locale("en_US_POSIX"), status));
    if (U_FAILURE(status) || !calendar)
        return nullptr;
    calendar->setTime(icuDate(instant), status);
    if (U_FAILURE(status))
        return nullptr;
    return calendar;
}

// `time` on the day that `now` falls on in `zone`. A time skipped by a daylight-saving change is moved
// forward by the change, as a wall clock would be.
std::optional<WallTime> instantAt(const NamedZone& zone, WallTime now, ClockTime time)
{
    auto calendar = calendarIn(zone, now);
    if (!calendar)
        return std::nullopt;
    calendar->set(UCAL_HOUR_OF_DAY, time.hour);
    calendar->set(UCAL_MINUTE, time.minute);
    calendar->set(UCAL_SECOND, 0);
    calendar->set(UCAL_MILLISECOND, 0);
    UErrorCode status = U_ZERO_ERROR;
    UDate date = calendar->getTime(status);
    if (U_FAILURE(status))
        return std::nullopt;
    return wallTime(date);
}

std::optional<std::int32_t> julianDay(const NamedZone& zone, WallTime instant)
{
    auto calendar = calendarIn(zone, instant);
    if (!calendar)
        return std::nullopt;
    UErrorCode status = U_ZERO_ERROR;
    auto day = calendar->get(UCAL_JULIAN_DAY, status);
    if (U_FAILURE(status))
        return std::nullopt;
    return day;
}

std::optional<NamedZone> fromTable(std::span<const ZoneName> table, std::string_view name)
{
    for (const auto& row : table) {
        if (row.name == name)
            return NamedZone { std::string(row.displayName), std::string(row.identifier) };
    }
    return std::nullopt;
}

bool isAbbreviation(std::string_view name)
{
    return fromTable(TimeZoneTables::abbreviations(), name).has_value();
}

std::string side(const NamedZone& zone, WallTime instant, std::string_view dayNote)
{
    auto text = CommandTimeZones::clock(zone, instant) + std::string(dayNote) + " in " + zone.displayName;
    auto shortName = formatted("z", zone, instant, "en");
    if (!shortName.empty() && shortName != zone.displayName)
        text += " (" + shortName + ")";
    return text;
}

std::optional<TimeZoneAnswer> answerFor(const NamedZone& from, const NamedZone& to, std::optional<WallTime> instant,
    ShowSource showSource)
{
    if (!instant)
        return std::nullopt;
    // "2:30am est" asked in New York needs no second clock.
    if (from.identifier == to.identifier)
        showSource = ShowSource::no;
    auto time = formatted("HH:mm", to, *instant, "en_US_POSIX");
    auto date = formatted("yyyy-MM-dd", to, *instant, "en_US_POSIX");
    if (time.empty() || date.empty())
        return std::nullopt;
    return TimeZoneAnswer { CommandTimeZones::describe(from, to, *instant, showSource), to.identifier, std::move(time),
        std::move(date), *instant };
}

} // namespace

const TimeZoneCityIndex& CommandTimeZones::cityIndex() const
{
    std::call_once(m_indexOnce, [this] { m_cityIndex = std::make_unique<TimeZoneCityIndex>(); });
    return *m_cityIndex;
}

std::optional<NamedZone> CommandTimeZones::zoneWithIdentifier(std::string_view identifier)
{
    if (!cachedZone(std::string(identifier)))
        return std::nullopt;
    return NamedZone { TimeZoneCityIndex::cityName(identifier), std::string(identifier) };
}

std::optional<NamedZone> CommandTimeZones::zone(std::string_view name) const
{
    auto lower = lowerCase(name);
    if (lower.empty())
        return std::nullopt;
    if (auto abbreviation = fromTable(TimeZoneTables::abbreviations(), lower))
        return abbreviation;
    if (auto place = fromTable(TimeZoneTables::places(), lower))
        return place;
    if (const auto* city = cityIndex().find(lower))
        return *city;
    if (const auto* identified = cityIndex().findIdentifier(lower))
        return *identified;
    return std::nullopt;
}

std::optional<ClockTime> CommandTimeZones::parse(std::string_view text)
{
    auto lower = lowerCase(text);
    std::string_view rest = lower;
    while (!rest.empty() && rest.front() == ' ')
        rest.remove_prefix(1);
    while (!rest.empty() && rest.back() == ' ')
        rest.remove_suffix(1);
    if (rest == "noon")
        return ClockTime { 12, 0 };
    if (rest == "midnight")
        return ClockTime { 0, 0 };

    auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
    std::size_t index = 0;
    int hour = 0;
    while (index < rest.size() && index < 2 && isDigit(rest[index]))
        hour = hour * 10 + (rest[index++] - '0');
    if (index == 0)
        return std::nullopt;
    int minute = 0;
    bool hasMinutes = false;
    if (index < rest.size() && rest[index] == ':') {
        if (index + 2 >= rest.size() || !isDigit(rest[index + 1]) || !isDigit(rest[index + 2]))
            return std::nullopt;
        minute = (rest[index + 1] - '0') * 10 + (rest[index + 2] - '0');
        hasMinutes = true;
        index += 3;
    }
    auto suffix = rest.substr(index);
    if (!suffix.empty() && suffix.front() == ' ')
        suffix.remove_prefix(1);
    if (minute > 59)
        return std::nullopt;
    if (suffix.empty()) {
        if (!hasMinutes || hour > 23)
            return std::nullopt;
        return ClockTime { hour, minute };
    }
    bool morning = suffix == "am" || suffix == "a.m." || suffix == "a";
    bool evening = suffix == "pm" || suffix == "p.m." || suffix == "p";
    if ((!morning && !evening) || hour < 1 || hour > 12)
        return std::nullopt;
    return ClockTime { hour % 12 + (evening ? 12 : 0), minute };
}

std::string CommandTimeZones::clock(const NamedZone& zone, WallTime instant)
{
    return formatted("h:mm a", zone, instant, "en");
}

std::string CommandTimeZones::describe(const NamedZone& from, const NamedZone& to, WallTime instant, ShowSource showSource)
{
    std::string dayNote;
    auto fromDay = julianDay(from, instant);
    auto toDay = julianDay(to, instant);
    if (fromDay && toDay && *fromDay != *toDay) {
        auto difference = *toDay - *fromDay;
        if (difference == 1)
            dayNote = " tomorrow";
        else if (difference == -1)
            dayNote = " yesterday";
        else
            dayNote = " on " + formatted("EEE d MMM", to, instant, "en");
    }
    auto target = side(to, instant, dayNote);
    if (showSource == ShowSource::no)
        return target;
    return side(from, instant, "") + " = " + target;
}

std::optional<TimeZoneAnswer> CommandTimeZones::convert(std::string_view query, WallTime now, std::string_view local) const
{
    auto words = splitWords(lowerCase(query));
    if (words.empty())
        return std::nullopt;
    auto localZone = zoneWithIdentifier(local);
    if (!localZone)
        return std::nullopt;

    for (const auto& prefix : currentTimePrefixes) {
        if (words.size() > prefix.size() && std::equal(prefix.begin(), prefix.end(), words.begin())) {
            auto target = zone(joined(words, prefix.size(), words.size()));
            if (!target)
                return std::nullopt;
            return answerFor(*localZone, *target, now, ShowSource::no);
        }
    }
    if (words.size() > 1 && words.back() == "time") {
        auto target = zone(joined(words, 0, words.size() - 1));
        if (!target)
            return std::nullopt;
        return answerFor(*localZone, *target, now, ShowSource::no);
    }

    std::optional<ClockTime> time;
    std::size_t used = 0;
    if (words.size() >= 2 && (time = parse(words[0] + " " + words[1])))
        used = 2;
    else if ((time = parse(words[0])))
        used = 1;
    Words rest(words.begin() + static_cast<std::ptrdiff_t>(used), words.end());
    if (rest.empty())
        return std::nullopt;

    if (time && isConnector(rest.front())) {
        auto target = zone(joined(rest, 1, rest.size()));
        if (!target)
            return std::nullopt;
        return answerFor(*localZone, *target, instantAt(*localZone, now, *time), ShowSource::yes);
    }

    for (std::size_t index = 1; index + 1 < rest.size(); ++index) {
        if (!isConnector(rest[index]))
            continue;
        auto source = zone(joined(rest, 0, index));
        auto target = zone(joined(rest, index + 1, rest.size()));
        if (source && target) {
            auto instant = time ? instantAt(*source, now, *time) : std::optional<WallTime>(now);
            return answerFor(*source, *target, instant, ShowSource::yes);
        }
    }

    auto name = joined(rest, 0, rest.size());
    auto place = zone(name);
    if (!place)
        return std::nullopt;
    if (time)
        return answerFor(*place, *localZone, instantAt(*place, now, *time), ShowSource::yes);
    // "et" or "pt" alone is more likely the start of a word than a question about the time.
    if (name.size() <= 2 && isAbbreviation(name))
        return std::nullopt;
    return answerFor(*localZone, *place, now, ShowSource::no);
}

} // namespace quillmar
