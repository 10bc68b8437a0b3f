#include "core/net/SafeFetcher.h"

#include <algorithm>
#include <string>
#include <vector>

namespace quillmar {

namespace {

std::string lowerAscii(std::string text)
{
    for (auto& character : text) {
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    }
    return text;
}

bool endsWith(std::string_view text, std::string_view suffix)
{
    return text.size() >= suffix.size() && text.substr(text.size() - suffix.size()) == suffix;
}

bool isLabelCharacter(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z')
        || (character >= '0' && character <= '9') || character == '-';
}

bool isValidLabel(std::string_view label)
{
    if (label.empty() || label.size() > 63 || label.front() == '-' || label.back() == '-')
        return false;
    return std::all_of(label.begin(), label.end(), isLabelCharacter);
}

std::vector<std::string_view> labels(std::string_view host)
{
    std::vector<std::string_view> pieces;
    std::size_t start = 0;
    while (true) {
        auto dot = host.find('.', start);
        pieces.push_back(host.substr(start, dot == std::string_view::npos ? std::string_view::npos : dot - start));
        if (dot == std::string_view::npos)
            return pieces;
        start = dot + 1;
    }
}

} // namespace

bool SafeFetcher::isAllowed(std::string_view url)
{
    auto parsed = Url::parse(url);
    return parsed && isAllowed(*parsed);
}

bool SafeFetcher::isAllowed(const Url& url)
{
    if (lowerAscii(url.scheme()) != "https")
        return false;
    if (url.user() || url.password() || url.fragment())
        return false;
    auto host = lowerAscii(url.host());
    if (host.empty())
        return false;
    if (host == "localhost" || endsWith(host, ".local") || endsWith(host, ".localhost"))
        return false;
    auto pieces = labels(host);
    if (pieces.size() < 2)
        return false;
    if (!std::all_of(pieces.begin(), pieces.end(), isValidLabel))
        return false;
    return std::any_of(pieces.begin(), pieces.end(), [](std::string_view label) {
        return std::any_of(label.begin(), label.end(), [](char c) { return c < '0' || c > '9'; });
    });
}

} // namespace quillmar
