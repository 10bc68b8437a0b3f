#include "core/appcast/Appcast.h"

#include <algorithm>
#include <climits>
#include <string>

#include <fmt/format.h>

#include "core/appcast/AppcastReader.h"
#include "core/appcast/ExpatParser.h"
#include "core/versions/AppVersion.h"
#include "core/versions/VersionCharacters.h"

namespace quillmar {

namespace {

// Between a namespace URI and a local name. U+0001 cannot appear in an XML 1.0 document, so it cannot be
// part of a URI.
constexpr char namespaceSeparator = '\x01';
// The document goes to expat in pieces of this many bytes (its length parameter is an int).
constexpr std::size_t chunkSize = 1 << 20;
// Even without entity declarations (which refuse the document anyway), expansion stays within expat's own
// bounds: at most this factor of output per input byte once this many bytes have been produced.
constexpr float maximumAmplification = 10.0f;
constexpr unsigned long long amplificationThreshold = 1 << 20;

struct ParseSession {
    XML_Parser parser;
    AppcastReader reader;
    std::vector<AppcastReader::Attribute> attributes;

    void stopIfRefused()
    {
        if (reader.refused())
            XML_StopParser(parser, XML_FALSE);
    }
};

AppcastReader::Name splitName(const XML_Char* raw)
{
    std::string_view name(raw);
    AppcastReader::Name split { {}, name };
    if (auto separator = name.rfind(namespaceSeparator); separator != std::string_view::npos) {
        split.namespaceUri = name.substr(0, separator);
        split.localName = name.substr(separator + 1);
    }
    if (auto colon = split.localName.rfind(':'); colon != std::string_view::npos)
        split.localName.remove_prefix(colon + 1);
    return split;
}

ParseSession& sessionOf(void* userData)
{
    return *static_cast<ParseSession*>(userData);
}

void onStartElement(void* userData, const XML_Char* name, const XML_Char** attributes)
{
    auto& session = sessionOf(userData);
    session.attributes.clear();
    for (const XML_Char** attribute = attributes; *attribute; attribute += 2)
        session.attributes.push_back({ splitName(attribute[0]), attribute[1] });
    session.reader.startElement(splitName(name), session.attributes);
    session.stopIfRefused();
}

void onEndElement(void* userData, const XML_Char* name)
{
    auto& session = sessionOf(userData);
    session.reader.endElement(splitName(name));
    session.stopIfRefused();
}

void onCharacters(void* userData, const XML_Char* text, int length)
{
    auto& session = sessionOf(userData);
    session.reader.characters(std::string_view(text, static_cast<std::size_t>(length)));
}

void onEntityDeclaration(void* userData, const XML_Char*, int, const XML_Char*, int, const XML_Char*, const XML_Char*,
    const XML_Char*, const XML_Char*)
{
    auto& session = sessionOf(userData);
    session.reader.entityDeclared();
    session.stopIfRefused();
}

int refuseExternalEntity(XML_Parser, const XML_Char*, const XML_Char*, const XML_Char*, const XML_Char*)
{
    return XML_STATUS_ERROR;
}

ParseFailure xmlFailure(XML_Parser handle)
{
    auto code = XML_GetErrorCode(handle);
    auto detail = fmt::format("appcast: {} at line {}", XML_ErrorString(code), XML_GetCurrentLineNumber(handle));
    bool overLimits = code == XML_ERROR_NO_MEMORY || code == XML_ERROR_AMPLIFICATION_LIMIT_BREACH;
    return ParseFailure { overLimits ? ParseProblem::tooLarge : ParseProblem::malformed, std::move(detail) };
}

// What an item is compared by: `version`, else `shortVersion`, else nothing.
std::string_view comparisonKey(const AppcastItem& item)
{
    if (item.version)
        return *item.version;
    if (item.shortVersion)
        return *item.shortVersion;
    return {};
}

bool hasText(const std::optional<std::string>& field)
{
    return field && !field->empty();
}

bool listsArchitecture(std::string_view requirements, std::string_view arch)
{
    auto lowered = lowercasedText(requirements);
    std::string_view rest = lowered;
    while (!rest.empty()) {
        auto end = rest.find_first_of(", ");
        if (rest.substr(0, end) == arch)
            return true;
        if (end == std::string_view::npos)
            break;
        rest.remove_prefix(end + 1);
    }
    return false;
}

bool isEligible(const AppcastItem& item, const std::string& system, std::string_view installedBuild, std::string_view arch)
{
    if (!item.hasDownload() || hasText(item.channel))
        return false;
    if (hasText(item.os)) {
        auto os = lowercasedText(*item.os);
        if (os != "macos" && os != "osx")
            return false;
    }
    if (hasText(item.hardwareRequirements) && !listsArchitecture(*item.hardwareRequirements, arch))
        return false;
    if (hasText(item.minimumSystemVersion) && AppVersion::compare(*item.minimumSystemVersion, system) > 0)
        return false;
    if (hasText(item.maximumSystemVersion) && AppVersion::compare(*item.maximumSystemVersion, system) < 0)
        return false;
    if (hasText(item.minimumUpdateVersion) && AppVersion::compare(*item.minimumUpdateVersion, installedBuild) > 0)
        return false;
    // Pre-releases are passed over.
    if (!AppVersion::isStableNumeric(comparisonKey(item)))
        return false;
    return !hasText(item.shortVersion) || AppVersion::isStableNumeric(*item.shortVersion);
}

bool isNewer(const AppcastItem& item, std::string_view installedBuild, std::string_view installedShort)
{
    if (item.version && !installedBuild.empty())
        return AppVersion::compare(*item.version, installedBuild) > 0;
    std::string_view offered = item.shortVersion ? *item.shortVersion : item.version ? *item.version : std::string_view();
    return AppVersion::compare(offered, installedShort) > 0;
}

} // namespace

ParseResult<std::vector<AppcastItem>> Appcast::parse(std::string_view bytes)
{
    auto parser = ExpatParser::createWithNamespaces(namespaceSeparator);
    if (!parser)
        return ParseFailure { ParseProblem::tooLarge, "appcast: no memory for the xml parser" };
    ParseSession session { parser->handle(), {}, {} };
    XML_Parser handle = parser->handle();
    XML_SetUserData(handle, &session);
    XML_SetElementHandler(handle, onStartElement, onEndElement);
    XML_SetCharacterDataHandler(handle, onCharacters);
    XML_SetEntityDeclHandler(handle, onEntityDeclaration);
    XML_SetExternalEntityRefHandler(handle, refuseExternalEntity);
    XML_SetParamEntityParsing(handle, XML_PARAM_ENTITY_PARSING_NEVER);
    XML_SetBillionLaughsAttackProtectionMaximumAmplification(handle, maximumAmplification);
    XML_SetBillionLaughsAttackProtectionActivationThreshold(handle, amplificationThreshold);

    do {
        auto chunk = bytes.substr(0, chunkSize);
        bytes.remove_prefix(chunk.size());
        auto status = XML_Parse(handle, chunk.data(), static_cast<int>(chunk.size()), bytes.empty() ? XML_TRUE : XML_FALSE);
        if (session.reader.refused())
            return *session.reader.refusal();
        if (status != XML_STATUS_OK)
            return xmlFailure(handle);
    } while (!bytes.empty());
    return session.reader.takeItems();
}

std::optional<AppcastItem> Appcast::bestUpdate(const std::vector<AppcastItem>& items, std::string_view installedBuild,
    std::string_view installedShort, const OperatingSystemVersion& system, std::string_view arch)
{
    auto systemVersion = system.text();
    const AppcastItem* best = nullptr;
    for (const auto& item : items) {
        if (!isEligible(item, systemVersion, installedBuild, arch) || !isNewer(item, installedBuild, installedShort))
            continue;
        // Strictly greater: among equal keys the earliest item stays.
        if (!best || AppVersion::compare(comparisonKey(item), comparisonKey(*best)) > 0)
            best = &item;
    }
    if (!best)
        return std::nullopt;
    return *best;
}

} // namespace quillmar
