#include "core/net/Url.h"

#include <algorithm>
#include <cstddef>

#include <curl/curl.h>

#include "core/base/Text.h"

namespace quillmar {

namespace {

struct UrlHandleDeleter {
    void operator()(CURLU* handle) const { curl_url_cleanup(handle); }
};
using UrlHandle = std::unique_ptr<CURLU, UrlHandleDeleter>;

std::optional<std::string> component(CURLU* handle, CURLUPart part, unsigned flags = 0)
{
    char* value = nullptr;
    if (curl_url_get(handle, part, &value, flags) != CURLUE_OK || !value)
        return std::nullopt;
    std::string result(value);
    curl_free(value);
    return result;
}

// curl wants a NUL-terminated string; an embedded NUL can never be part of a valid URL.
std::optional<std::string> terminated(std::string_view text)
{
    if (text.find('\0') != std::string_view::npos)
        return std::nullopt;
    return std::string(text);
}

bool isAsciiLetter(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

bool isSchemeCharacter(char character)
{
    return isAsciiLetter(character) || isDigit(character) || character == '+' || character == '-' || character == '.';
}

// The length of the scheme that `text` begins with ("https" in "https:..."); none when it begins with none.
std::optional<std::size_t> schemeLength(std::string_view text)
{
    auto colon = text.find(':');
    if (colon == std::string_view::npos || colon == 0 || !isAsciiLetter(text.front()))
        return std::nullopt;
    if (!std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(colon), isSchemeCharacter))
        return std::nullopt;
    return colon;
}

// The authority as the text writes it, between "scheme://" and the path, query or fragment.
struct WrittenAuthority {
    std::string_view host;       // with brackets for an IPv6 literal; empty in "file:///tmp"
    std::string_view port;       // the digits after the host's colon; empty when there are none
    std::size_t portColon = 0;   // where the colon before the port stands, when there is a port
    std::size_t end = 0;         // where the authority ends
};

// None when "//" does not follow the scheme, or the port is not digits.
std::optional<WrittenAuthority> writtenAuthority(std::string_view text, std::size_t schemeLength)
{
    auto begin = schemeLength + 3;
    if (text.substr(schemeLength, 3) != "://")
        return std::nullopt;
    WrittenAuthority written;
    written.end = std::min(text.find_first_of("/?#", begin), text.size());
    auto authority = text.substr(begin, written.end - begin);
    auto at = authority.rfind('@');
    auto hostBegin = at == std::string_view::npos ? 0 : at + 1;
    auto hostAndPort = authority.substr(hostBegin);
    auto hostLength = std::min(hostAndPort.find(':'), hostAndPort.size());
    if (!hostAndPort.empty() && hostAndPort.front() == '[') {
        auto close = hostAndPort.find(']');
        if (close == std::string_view::npos)
            return std::nullopt;
        hostLength = close + 1;
    }
    written.host = hostAndPort.substr(0, hostLength);
    auto rest = hostAndPort.substr(hostLength);
    if (rest.empty())
        return written;
    if (rest.front() != ':')
        return std::nullopt;
    written.port = rest.substr(1);
    written.portColon = begin + hostBegin + hostLength;
    if (!std::all_of(written.port.begin(), written.port.end(), isDigit))
        return std::nullopt;
    return written;
}

} // namespace

std::optional<Url> Url::parse(std::string_view text)
{
    auto input = terminated(text);
    auto scheme = schemeLength(text);
    if (!input || !scheme)
        return std::nullopt;
    auto authority = writtenAuthority(text, *scheme);
    if (!authority)
        return std::nullopt;
    // libcurl refuses a port beyond 65535, but the port is not this type's to judge: such a URL parses, and
    // a transfer to it fails. libcurl reads it without the port; the digits are kept aside.
    auto significantPort = authority->port.substr(std::min(authority->port.find_first_not_of('0'), authority->port.size()));
    bool portOutOfRange = significantPort.size() > 5 || (significantPort.size() == 5 && significantPort > "65535");
    if (portOutOfRange)
        input->erase(authority->portColon, authority->end - authority->portColon);

    UrlHandle handle(curl_url());
    if (!handle)
        return std::nullopt;
    if (curl_url_set(handle.get(), CURLUPART_URL, input->c_str(), CURLU_NON_SUPPORT_SCHEME) != CURLUE_OK)
        return std::nullopt;

    Url url;
    auto curlScheme = component(handle.get(), CURLUPART_SCHEME);
    if (!curlScheme)
        return std::nullopt;
    url.m_scheme = asciiLower(*curlScheme);
    url.m_host = asciiLower(component(handle.get(), CURLUPART_HOST).value_or(""));
    // libcurl decodes a percent-encoded host, reads "77552" or "0x7f.1" as an IPv4 address and takes a host
    // from the path when the authority is empty. Each would make the URL name a host its text does not, and
    // its normalised text parse to yet another: only a host kept as written is accepted.
    if (url.m_host != asciiLower(std::string(authority->host)))
        return std::nullopt;
    url.m_user = component(handle.get(), CURLUPART_USER);
    url.m_password = component(handle.get(), CURLUPART_PASSWORD);
    url.m_port = portOutOfRange ? std::optional<std::string>(significantPort) : component(handle.get(), CURLUPART_PORT);
    url.m_path = component(handle.get(), CURLUPART_PATH).value_or("");
    url.m_query = component(handle.get(), CURLUPART_QUERY);
    url.m_fragment = component(handle.get(), CURLUPART_FRAGMENT);
    // curl drops an empty fragment ("…/a#"), but the URL still has one.
    if (!url.m_fragment && input->find('#') != std::string::npos)
        url.m_fragment = std::string();
    url.m_text = url.composedText();
    return url;
}

std::string Url::composedText() const
{
    std::string text = m_scheme + "://";
    if (m_user || m_password)
        text += m_user.value_or("") + (m_password ? ":" + *m_password : std::string()) + "@";
    text += m_host;
    if (m_port)
        text += ":" + *m_port;
    text += m_path;
    if (m_query)
        text += "?" + *m_query;
    if (m_fragment)
        text += "#" + *m_fragment;
    return text;
}

std::optional<Url> Url::resolved(std::string_view reference) const
{
    // A reference with a scheme or an authority of its own names its host itself, and is read as strictly
    // as any address: libcurl would take a host from "https:/elsewhere.org/x" too.
    if (schemeLength(reference))
        return parse(reference);
    if (reference.substr(0, 2) == "//")
        return parse(m_scheme + ":" + std::string(reference));
    auto input = terminated(reference);
    if (!input)
        return std::nullopt;
    UrlHandle handle(curl_url());
    if (!handle)
        return std::nullopt;
    if (curl_url_set(handle.get(), CURLUPART_URL, m_text.c_str(), CURLU_NON_SUPPORT_SCHEME) != CURLUE_OK)
        return std::nullopt;
    // With a base already set, curl resolves a relative reference against it.
    if (curl_url_set(handle.get(), CURLUPART_URL, input->c_str(), CURLU_NON_SUPPORT_SCHEME) != CURLUE_OK)
        return std::nullopt;
    auto whole = component(handle.get(), CURLUPART_URL);
    if (!whole)
        return std::nullopt;
    return parse(*whole);
}

} // namespace quillmar
