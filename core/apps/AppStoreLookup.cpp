#include "core/apps/AppStoreLookup.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <unicode/locid.h>

#include "core/base/CivilDate.h"
#include "core/base/Text.h"

namespace quillmar {

namespace {

// Deeper nesting than any real reply has; checked before parsing so that hostile input cannot exhaust the
// stack of the JSON library.
constexpr int maximumNesting = 64;

bool nestsWithin(std::string_view bytes, int limit)
{
    int depth = 0;
    bool inString = false;
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        char character = bytes[index];
        if (inString) {
            if (character == '\\')
                ++index;
            else if (character == '"')
                inString = false;
        } else if (character == '"') {
            inString = true;
        } else if (character == '[' || character == '{') {
            if (++depth > limit)
                return false;
        } else if (character == ']' || character == '}') {
            --depth;
        }
    }
    return true;
}

std::string percentEncoded(std::string_view text)
{
    std::string encoded;
    for (char character : text) {
        bool unreserved = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z')
            || (character >= '0' && character <= '9') || character == '-' || character == '.' || character == '_'
            || character == '~';
        if (unreserved)
            encoded += character;
        else
            encoded += fmt::format("%{:02X}", static_cast<unsigned char>(character));
    }
    return encoded;
}

std::optional<std::string> stringField(const nlohmann::json& object, const char* key)
{
    auto found = object.find(key);
    if (found == object.end() || !found->is_string())
        return std::nullopt;
    return found->get<std::string>();
}

bool isMacListing(const nlohmann::json& result)
{
    auto kind = stringField(result, "kind");
    if (kind == "mac-software")
        return true;
    if (kind != "software")
        return false;
    auto devices = result.find("supportedDevices");
    if (devices == result.end() || !devices->is_array())
        return false;
    for (const auto& device : *devices) {
        if (!device.is_string())
            continue;
        auto name = asciiLower(device.get<std::string>());
        if (name.starts_with("macdesktop"))
            return true;
    }
    return false;
}

std::optional<std::int64_t> epochSeconds(const std::optional<std::string>& text)
{
    if (!text)
        return std::nullopt;
    auto milliseconds = parseTimestamp(*text);
    if (!milliseconds)
        return std::nullopt;
    // Whole seconds, rounded down also before 1970.
    auto seconds = *milliseconds / 1000;
    return *milliseconds % 1000 < 0 ? seconds - 1 : seconds;
}

} // namespace

std::string AppStoreLookup::requestURL(const std::vector<std::string>& bundleIDs, std::string_view country,
    const Origins& origins)
{
    std::string identifiers;
    for (const auto& bundleID : bundleIDs) {
        if (!identifiers.empty())
            identifiers += ',';
        identifiers += percentEncoded(bundleID);
    }
    return fmt::format("{}/lookup?bundleId={}&entity=macSoftware&country={}", origins.lookup, identifiers,
        percentEncoded(country));
}

std::string AppStoreLookup::requestURL(const std::vector<std::string>& bundleIDs, std::string_view country)
{
    return requestURL(bundleIDs, country, Origins {});
}

std::string AppStoreLookup::country(std::string_view localeName)
{
    // ICU reads both "de_CH.UTF-8" and "de-CH"; the encoding and any "@modifier" are not part of the region.
    auto name = std::string(localeName.substr(0, localeName.find_first_of(".@")));
    icu::Locale locale(name.c_str());
    std::string region = locale.isBogus() ? "" : locale.getCountry();
    if (region.size() != 2)
        return "us";
    for (auto& character : region) {
        character = asciiLower(character);
        if (character < 'a' || character > 'z')
            return "us";
    }
    return region;
}

ParseResult<std::vector<StoreListing>> AppStoreLookup::parse(std::string_view bytes)
{
    if (!nestsWithin(bytes, maximumNesting))
        return ParseFailure { ParseProblem::tooLarge, fmt::format("app store: nested deeper than {} levels", maximumNesting) };
    auto document = nlohmann::json::parse(bytes, nullptr, /*allow_exceptions=*/false);
    if (document.is_discarded())
        return ParseFailure { ParseProblem::malformed, "app store: reply is not json" };
    if (!document.is_object())
        return ParseFailure { ParseProblem::malformed, "app store: reply is not a json object" };
    auto results = document.find("results");
    if (results == document.end() || !results->is_array())
        return ParseFailure { ParseProblem::malformed, "app store: reply has no results array" };
    std::vector<StoreListing> listings;
    for (const auto& result : *results) {
        if (!result.is_object())
            continue;
        auto bundleID = stringField(result, "bundleId");
        auto version = stringField(result, "version");
        if (!bundleID || !version)
            continue;
        StoreListing listing;
        listing.bundleID = std::move(*bundleID);
        listing.version = std::move(*version);
        listing.minimumOS = stringField(result, "minimumOsVersion");
        if (auto page = stringField(result, "trackViewUrl"))
            listing.pageURL = Url::parse(*page);
        listing.releaseNotes = stringField(result, "releaseNotes");
        listing.releaseDate = epochSeconds(stringField(result, "currentVersionReleaseDate"));
        listing.isMacListing = isMacListing(result);
        listings.push_back(std::move(listing));
    }
    return listings;
}

} // namespace quillmar
