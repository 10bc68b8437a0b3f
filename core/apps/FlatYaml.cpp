#include "core/apps/FlatYaml.h"

#include "core/base/Text.h"

namespace quillmar {

namespace {

std::string_view unquoted(std::string_view value)
{
    if (!value.empty() && (value.front() == '"' || value.front() == '\'')) {
        auto closing = value.find(value.front(), 1);
        if (closing == std::string_view::npos)
            return value;
        auto rest = trimmed(value.substr(closing + 1));
        return rest.empty() || rest.front() == '#' ? value.substr(1, closing - 1) : value;
    }
    auto comment = value.find(" #");
    if (comment == std::string_view::npos)
        comment = value.find("\t#");
    return comment == std::string_view::npos ? value : trimmed(value.substr(0, comment));
}

// The position of the colon that ends the key, or npos.
std::size_t keyEnd(std::string_view line)
{
    for (std::size_t position = line.find(':'); position != std::string_view::npos; position = line.find(':', position + 1)) {
        if (position + 1 == line.size() || line[position + 1] == ' ' || line[position + 1] == '\t')
            return position;
    }
    return std::string_view::npos;
}

} // namespace

std::map<std::string, std::string, std::less<>> flatYamlScalars(std::string_view text)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.substr(0, byteOrderMark.size()) == byteOrderMark)
        text.remove_prefix(byteOrderMark.size());

    std::map<std::string, std::string, std::less<>> scalars;
    while (!text.empty()) {
        auto lineEnd = text.find('\n');
        auto line = text.substr(0, lineEnd);
        text.remove_prefix(lineEnd == std::string_view::npos ? text.size() : lineEnd + 1);
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);

        if (line.empty() || isAsciiSpace(line.front()) || line.front() == '#' || line.front() == '-'
            || line.starts_with("..."))
            continue;
        auto colon = keyEnd(line);
        if (colon == std::string_view::npos)
            continue;
        auto key = unquoted(trimmed(line.substr(0, colon)));
        auto value = trimmed(line.substr(colon + 1));
        if (key.empty() || value.empty())
            continue;
        scalars.emplace(std::string(key), std::string(unquoted(value)));
    }
    return scalars;
}

} // namespace quillmar
