#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quillmar {

// An absolute URL, parsed once. Components are as the URL carries them (percent-encoded, not decoded);
// the scheme and host are lower-cased. An empty fragment ("…/a#") is present and empty. Copyable; cheap to pass around.
class Url final {
public:
    // None unless `text` is "scheme://authority" followed by an optional path, query and fragment, with any
    // scheme, known or not. The host is taken only as written: a text whose host the parser would have to
    // decode, reinterpret ("77552" as an IPv4 address) or guess (from "https:/example.com" or
    // "https:///example.com") is not a URL. The port must be digits; its value is not judged.
    static std::optional<Url> parse(std::string_view text);

    // The whole URL in its normalised form; parsed again, it gives this same URL.
    const std::string& text() const { return m_text; }

    const std::string& scheme() const { return m_scheme; }
    // Empty when the URL has no host (as in "file:///tmp").
    const std::string& host() const { return m_host; }
    const std::optional<std::string>& user() const { return m_user; }
    const std::optional<std::string>& password() const { return m_password; }
    const std::optional<std::string>& port() const { return m_port; }
    const std::string& path() const { return m_path; }
    const std::optional<std::string>& query() const { return m_query; }
    const std::optional<std::string>& fragment() const { return m_fragment; }

    // `reference` (absolute, or relative such as a Location header's "/next") resolved against this URL;
    // none when it does not resolve to a valid URL. A reference with a scheme or an authority of its own is
    // read as `parse` reads it.
    std::optional<Url> resolved(std::string_view reference) const;

    friend bool operator==(const Url& a, const Url& b) { return a.m_text == b.m_text; }

private:
    Url() = default;

    std::string composedText() const;

    std::string m_text;
    std::string m_scheme;
    std::string m_host;
    std::optional<std::string> m_user;
    std::optional<std::string> m_password;
    std::optional<std::string> m_port;
    std::string m_path;
    std::optional<std::string> m_query;
    std::optional<std::string> m_fragment;
};

} // namespace quillmar
