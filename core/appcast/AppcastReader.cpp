#include "core/appcast/AppcastReader.h"

#include <fmt/format.h>

#include "core/appcast/AbsoluteUrl.h"
#include "core/versions/VersionCharacters.h"

namespace quillmar {

namespace {

bool isItem(AppcastReader::Name name)
{
    // The Sparkle namespace has an element of that name too; it is not an item of the feed.
    return name.localName == "item" && name.namespaceUri != AppcastReader::sparkleNamespace;
}

bool isEmpty(const std::optional<std::string>& field)
{
    return !field || field->empty();
}

bool startsCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
}

} // namespace

AppcastReader::AppcastReader() = default;
AppcastReader::~AppcastReader() = default;

void AppcastReader::startElement(Name name, std::span<const Attribute> attributes)
{
    if (refused())
        return;
    if (m_depth >= maximumDepth) {
        m_refusal = ParseFailure { ParseProblem::tooLarge, fmt::format("appcast: element on level {}", m_depth + 1) };
        return;
    }
    ++m_depth;
    m_text.clear();
    m_textLength = 0;
    if (isItem(name)) {
        if (m_items.size() >= maximumItems) {
            m_refusal = ParseFailure { ParseProblem::tooLarge, fmt::format("appcast: more than {} items", maximumItems) };
            return;
        }
        m_current = AppcastItem {};
    } else if (name.localName == "deltas") {
        ++m_deltaDepth;
    } else if (name.localName == "enclosure" && m_deltaDepth == 0 && m_current) {
        readEnclosure(attributes);
    }
}

void AppcastReader::endElement(Name name)
{
    if (refused())
        return;
    if (m_depth > 0)
        --m_depth;
    if (name.localName == "deltas" && m_deltaDepth > 0)
        --m_deltaDepth;
    if (!m_current)
        return;
    if (isItem(name)) {
        if (!m_current->isBlank())
            m_items.push_back(std::move(*m_current));
        m_current.reset();
        return;
    }
    storeText(name.localName, trimmedUnicodeSpace(m_text));
}

void AppcastReader::characters(std::string_view text)
{
    if (refused() || m_textLength >= maximumTextLength)
        return;
    std::size_t taken = 0;
    while (taken < text.size()) {
        if (startsCharacter(text[taken])) {
            if (m_textLength == maximumTextLength)
                break;
            ++m_textLength;
        }
        ++taken;
    }
    m_text.append(text.substr(0, taken));
}

void AppcastReader::entityDeclared()
{
    if (!refused())
        m_refusal = ParseFailure { ParseProblem::refused, "appcast: declares an entity" };
}

void AppcastReader::readEnclosure(std::span<const Attribute> attributes)
{
    for (const auto& attribute : attributes) {
        // Delta updates are never offered.
        if (attribute.name.localName == "deltaFrom")
            return;
    }
    auto& item = *m_current;
    // The first value wins: an element given earlier in the item, or an earlier enclosure.
    auto fill = [](std::optional<std::string>& field, std::optional<std::string> value) {
        if (isEmpty(field) && value)
            field = std::move(value);
    };
    for (const auto& attribute : attributes) {
        auto local = attribute.name.localName;
        if (local == "url")
            fill(item.downloadURL, AbsoluteUrl::validated(attribute.value));
        else if (local == "version")
            fill(item.version, std::string(attribute.value));
        else if (local == "shortVersionString")
            fill(item.shortVersion, std::string(attribute.value));
        else if (local == "os")
            fill(item.os, std::string(attribute.value));
        else if (local == "minimumSystemVersion")
            fill(item.minimumSystemVersion, std::string(attribute.value));
    }
}

void AppcastReader::storeText(std::string_view localName, std::string_view text)
{
    auto& item = *m_current;
    if (localName == "version")
        item.version = std::string(text);
    else if (localName == "shortVersionString")
        item.shortVersion = std::string(text);
    else if (localName == "minimumSystemVersion")
        item.minimumSystemVersion = std::string(text);
    else if (localName == "maximumSystemVersion")
        item.maximumSystemVersion = std::string(text);
    else if (localName == "minimumUpdateVersion")
        item.minimumUpdateVersion = std::string(text);
    else if (localName == "channel")
        item.channel = std::string(text);
    else if (localName == "hardwareRequirements")
        item.hardwareRequirements = std::string(text);
    else if (localName == "releaseNotesLink")
        item.releaseNotesURL = AbsoluteUrl::validated(text);
    else if (localName == "title")
        item.title = std::string(text);
    else if (localName == "link")
        item.link = AbsoluteUrl::validated(text);
    else if (localName == "description")
        item.notesHTML = std::string(text);
    else if (localName == "pubDate") {
        if (!m_dates)
            m_dates = std::make_unique<PubDateParser>();
        item.date = m_dates->parse(text);
    }
}

} // namespace quillmar
