#include "core/appcast/ExpatParser.h"

namespace quillmar {

std::unique_ptr<ExpatParser> ExpatParser::createWithNamespaces(char separator)
{
    XML_Parser parser = XML_ParserCreateNS(nullptr, separator);
    if (!parser)
        return nullptr;
    return std::unique_ptr<ExpatParser>(new ExpatParser(parser));
}

ExpatParser::~ExpatParser()
{
    XML_ParserFree(m_parser);
}

} // namespace quillmar
