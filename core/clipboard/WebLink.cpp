#include "core/clipboard/WebLink.h"

#include "core/base/Text.h"

namespace quillmar {

namespace {

} // namespace

std::optional<WebLink> WebLink::parse(std::string_view text)
{
    for (char character : text) {
        auto byte = static_cast<unsigned char>(character);
        if (byte <= 0x20 || byte == 0x7F)
            return std::nullopt;
    }
    auto colon = text.find("://");
    if (colon == std::string_view::npos)
        return std::nullopt;
    WebLink url;
    url.scheme = asciiLower(text.substr(0, colon));
    if (url.scheme != "http" && url.scheme != "https")
        return std::nullopt;
    auto rest = text.substr(colon + 3);

    auto authorityEnd = rest.find_first_of("/?#");
    url.authority = std::string(rest.substr(0, authorityEnd));
    rest = authorityEnd == std::string_view::npos ? std::string_view() : rest.substr(authorityEnd);

    std::string_view host = url.authority;
    if (auto at = host.rfind('@'); at != std::string_view::npos)
        host = host.substr(at + 1);
    if (!host.empty() && host.front() == '[') {
        auto close = host.find(']');
        if (close == std::string_view::npos)
            return std::nullopt;
        host = host.substr(1, close - 1);
    } else if (auto port = host.find(':'); port != std::string_view::npos) {
        host = host.substr(0, port);
    }
    if (host.empty())
        return std::nullopt;
    url.host = asciiLower(host);

    if (auto hash = rest.find('#'); hash != std::string_view::npos) {
        url.fragment = std::string(rest.substr(hash + 1));
        rest = rest.substr(0, hash);
    }
    if (auto question = rest.find('?'); question != std::string_view::npos) {
        url.query = std::string(rest.substr(question + 1));
        rest = rest.substr(0, question);
    }
    url.path = std::string(rest);
    return url;
}

std::string WebLink::toString() const
{
    std::string text = scheme + "://" + authority + path;
    if (query)
        text += "?" + *query;
    if (fragment)
        text += "#" + *fragment;
    return text;
}

} // namespace quillmar
