#include "core/agents/LocalDays.h"

#include <cmath>
#include <limits>

#include <fmt/format.h>
#include <unicode/basictz.h>
#include <unicode/gregocal.h>
#include <unicode/timezone.h>
#include <unicode/tztrans.h>
#include <unicode/unistr.h>

namespace quillmar {

namespace {

constexpr std::int64_t millisecondsPerDay = 86'400'000;

std::int64_t floorDivide(std::int64_t value, std::int64_t divisor)
{
    auto quotient = value / divisor;
    return value % divisor < 0 ? quotient - 1 : quotient;
}

} // namespace

struct LocalDays::Zone {
    std::unique_ptr<icu::TimeZone> zone;
};

LocalDays::LocalDays(std::unique_ptr<Zone> zone)
    : m_zone(std::move(zone))
{
}

LocalDays::LocalDays(const LocalDays& other)
    : m_zone(std::make_unique<Zone>(Zone { std::unique_ptr<icu::TimeZone>(other.m_zone->zone->clone()) }))
{
}

LocalDays& LocalDays::operator=(const LocalDays& other)
{
    if (this != &other) {
        m_zone = std::make_unique<Zone>(Zone { std::unique_ptr<icu::TimeZone>(other.m_zone->zone->clone()) });
        m_spanStart = m_spanEnd = m_spanOffset = 0;
    }
    return *this;
}

LocalDays::LocalDays(LocalDays&&) noexcept = default;
LocalDays& LocalDays::operator=(LocalDays&&) noexcept = default;
LocalDays::~LocalDays() = default;

Result<LocalDays> LocalDays::create(std::string_view zoneId)
{
    auto id = icu::UnicodeString::fromUTF8(icu::StringPiece(zoneId.data(), static_cast<std::int32_t>(zoneId.size())));
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(id));
    icu::UnicodeString resolved;
    icu::UnicodeString unknown;
    if (zone)
        zone->getID(resolved);
    icu::TimeZone::getUnknown().getID(unknown);
    if (!zone || resolved == unknown)
        return Error { "agents.zone", fmt::format("The time zone \"{}\" is not known.", zoneId), std::string(zoneId) };
    return LocalDays(std::make_unique<Zone>(Zone { std::move(zone) }));
}

LocalDays LocalDays::systemZone()
{
    return LocalDays(std::make_unique<Zone>(Zone { std::unique_ptr<icu::TimeZone>(icu::TimeZone::createDefault()) }));
}

std::string LocalDays::zoneId() const
{
    icu::UnicodeString id;
    m_zone->zone->getID(id);
    std::string text;
    id.toUTF8String(text);
    return text;
}

std::int64_t LocalDays::offsetAt(std::int64_t utcMilliseconds) const
{
    if (utcMilliseconds >= m_spanStart && utcMilliseconds < m_spanEnd)
        return m_spanOffset;
    auto instant = static_cast<UDate>(utcMilliseconds);
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t raw = 0;
    std::int32_t daylight = 0;
    m_zone->zone->getOffset(instant, /*local=*/false, raw, daylight, status);
    m_spanOffset = U_SUCCESS(status) ? std::int64_t(raw) + daylight : 0;
    m_spanStart = utcMilliseconds;
    m_spanEnd = utcMilliseconds + 1;
    if (const auto* basic = dynamic_cast<const icu::BasicTimeZone*>(m_zone->zone.get())) {
        icu::TimeZoneTransition transition;
        m_spanStart = basic->getPreviousTransition(instant, /*inclusive=*/true, transition)
            ? static_cast<std::int64_t>(transition.getTime())
            : std::numeric_limits<std::int64_t>::min();
        m_spanEnd = basic->getNextTransition(instant, /*inclusive=*/false, transition)
            ? static_cast<std::int64_t>(transition.getTime())
            : std::numeric_limits<std::int64_t>::max();
    }
    return m_spanOffset;
}

Day LocalDays::dayOf(std::int64_t utcMilliseconds) const
{
    return static_cast<Day>(floorDivide(utcMilliseconds + offsetAt(utcMilliseconds), millisecondsPerDay));
}

std::int64_t LocalDays::startOf(Day day) const
{
    UErrorCode status = U_ZERO_ERROR;
    icu::GregorianCalendar calendar(*m_zone->zone, status);
    auto date = civilFromDay(day);
    calendar.clear();
    calendar.set(date.year, date.month - 1, date.day, 0, 0, 0);
    auto instant = calendar.getTime(status);
    if (U_FAILURE(status))
        return std::int64_t(day) * 86'400;
    return static_cast<std::int64_t>(std::floor(instant / 1000.0));
}

} // namespace quillmar
