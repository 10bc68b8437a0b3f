#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/appcast/AppcastItem.h"
#include "core/appcast/PubDateParser.h"
#include "core/base/ParseResult.h"

namespace quillmar {

// The state of reading one appcast: receives the events of a namespace-aware streaming XML parser and
// collects the items. It knows nothing of the parser itself; whoever feeds it stops the parser as soon as
// `refused()` turns true.
class AppcastReader final {
public:
    // An element's or attribute's name as the parser resolved it: its namespace URI (empty for none) and its
    // local name.
    struct Name {
        std::string_view namespaceUri;
        std::string_view localName;
    };
    struct Attribute {
        Name name;
        std::string_view value;
    };

    // The namespace appcasts declare for their `sparkle:` prefix.
    static constexpr std::string_view sparkleNamespace = "http://www.andymatuschak.org/xml-namespaces/sparkle";
    // Element levels a document may have; an element on the level after it refuses the document.
    static constexpr int maximumDepth = 32;
    // Characters (code points) of text kept per element; the rest of the element's text is dropped.
    static constexpr std::size_t maximumTextLength = 200'000;
    // Items a document may hold; starting one more refuses it.
    static constexpr std::size_t maximumItems = 4'000;

    AppcastReader();
    ~AppcastReader();
    AppcastReader(const AppcastReader&) = delete;
    AppcastReader& operator=(const AppcastReader&) = delete;

    void startElement(Name name, std::span<const Attribute> attributes);
    void endElement(Name name);
    // Character data and CDATA sections, in pieces of whole UTF-8 characters.
    void characters(std::string_view text);
    // Any entity declaration, internal, external or unparsed: the document is refused. Entities are how
    // expansion bombs and reads of local files get in, and no appcast needs one.
    void entityDeclared();

    // Set once the document is refused (entities) or exceeds the limits; the reader then ignores the rest.
    bool refused() const { return m_refusal.has_value(); }
    const std::optional<ParseFailure>& refusal() const { return m_refusal; }
    // The items in document order.
    std::vector<AppcastItem> takeItems() { return std::move(m_items); }

private:
    void readEnclosure(std::span<const Attribute> attributes);
    void storeText(std::string_view localName, std::string_view text);

    std::vector<AppcastItem> m_items;
    std::optional<AppcastItem> m_current;
    std::string m_text;
    std::size_t m_textLength = 0; // in code points
    int m_depth = 0;
    int m_deltaDepth = 0;
    std::optional<ParseFailure> m_refusal;
    std::unique_ptr<PubDateParser> m_dates; // built on the first date
};

} // namespace quillmar
