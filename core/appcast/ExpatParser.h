#pragma once

#include <memory>

#include <expat.h>

namespace quillmar {

// Owns one expat parser; freed with it. Made by `create`, which fails only when expat cannot allocate.
class ExpatParser final {
public:
    // A namespace-aware parser: element and attribute names arrive as "<namespace URI><separator><local
    // name>", or as the local name alone when the name has no namespace.
    static std::unique_ptr<ExpatParser> createWithNamespaces(char separator);

    ~ExpatParser();
    ExpatParser(const ExpatParser&) = delete;
    ExpatParser& operator=(const ExpatParser&) = delete;

    XML_Parser handle() const { return m_parser; }

private:
    explicit ExpatParser(XML_Parser parser) : m_parser(parser) { }

    XML_Parser m_parser;
};

} // namespace quillmar
