#include "core/net/Url.h"

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

} // namespace

std::optional<Url> Url::parse(std::string_view text)
{
    auto input = terminated(text);
    if (!input)
        return std::nullopt;
    UrlHandle handle(curl_url());
    if (!handle)
        return std::nullopt;
    if (curl_url_set(handle.get(), CURLUPART_URL, input->c_str(), CURLU_NON_SUPPORT_SCHEME) != CURLUE_OK)
        return std::nullopt;

    Url url;
    auto whole = component(handle.get(), CURLUPART_URL);
    auto scheme = component(handle.get(), CURLUPART_SCHEME);
    if (!whole || !scheme)
        return std::nullopt;
    url.m_text = std::move(*whole);
    url.m_scheme = std::move(*scheme);
    url.m_host = component(handle.get(), CURLUPART_HOST).value_or("");
    url.m_user = component(handle.get(), CURLUPART_USER);
    url.m_password = component(handle.get(), CURLUPART_PASSWORD);
    url.m_port = component(handle.get(), CURLUPART_PORT);
    url.m_path = component(handle.get(), CURLUPART_PATH).value_or("");
    url.m_query = component(handle.get(), CURLUPART_QUERY);
    url.m_fragment = component(handle.get(), CURLUPART_FRAGMENT);
    // curl drops an empty fragment ("…/a#"), but the URL still has one.
    if (!url.m_fragment && input->find('#') != std::string::npos)
        url.m_fragment = std::string();
    // Host names are case-insensitive; one spelling keeps comparisons simple.
    url.m_host = asciiLower(url.m_host);
    return url;
}

std::optional<Url> Url::resolved(std::string_view reference) const
{
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
