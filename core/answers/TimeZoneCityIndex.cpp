#include "core/answers/TimeZoneCityIndex.h"

#include <array>
#include <memory>

#include <unicode/strenum.h>
#include <unicode/timezone.h>

#include "core/answers/IcuText.h"
#include "core/base/Text.h"

namespace quillmar {

namespace {

constexpr std::array<std::string_view, 10> geographicAreas { "Africa", "America", "Antarctica", "Arctic", "Asia",
    "Atlantic", "Australia", "Europe", "Indian", "Pacific" };

bool isGeographic(std::string_view identifier)
{
    auto slash = identifier.find('/');
    if (slash == std::string_view::npos)
        return false;
    auto area = identifier.substr(0, slash);
    for (auto known : geographicAreas) {
        if (area == known)
            return true;
    }
    return false;
}

} // namespace

std::string TimeZoneCityIndex::cityName(std::string_view identifier)
{
    auto slash = identifier.rfind('/');
    std::string city(slash == std::string_view::npos ? identifier : identifier.substr(slash + 1));
    for (auto& character : city) {
        if (character == '_')
            character = ' ';
    }
    return city;
}

TimeZoneCityIndex::TimeZoneCityIndex()
{
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::StringEnumeration> identifiers(icu::TimeZone::createEnumeration(status));
    if (U_FAILURE(status) || !identifiers)
        return;
    while (const icu::UnicodeString* next = identifiers->snext(status)) {
        if (U_FAILURE(status))
            break;
        auto identifier = utf8String(*next);
        m_identifiers.emplace(asciiLower(identifier), NamedZone { cityName(identifier), identifier });
        if (!isGeographic(identifier))
            continue;
        icu::UnicodeString canonicalIdentifier;
        UErrorCode canonicalStatus = U_ZERO_ERROR;
        icu::TimeZone::getCanonicalID(*next, canonicalIdentifier, canonicalStatus);
        bool canonical = U_SUCCESS(canonicalStatus) && canonicalIdentifier == *next;

        auto display = cityName(identifier);
        auto key = asciiLower(display);
        auto found = m_cities.find(key);
        Entry entry { NamedZone { std::move(display), std::move(identifier) }, canonical };
        if (found == m_cities.end())
            m_cities.emplace(std::move(key), std::move(entry));
        else if (canonical && !found->second.canonical)
            found->second = std::move(entry);
    }
}

const NamedZone* TimeZoneCityIndex::findIdentifier(std::string_view lowerCaseIdentifier) const
{
    auto found = m_identifiers.find(std::string(lowerCaseIdentifier));
    return found == m_identifiers.end() ? nullptr : &found->second;
}

const NamedZone* TimeZoneCityIndex::find(std::string_view city) const
{
    auto found = m_cities.find(std::string(city));
    return found == m_cities.end() ? nullptr : &found->second.zone;
}

} // namespace quillmar
