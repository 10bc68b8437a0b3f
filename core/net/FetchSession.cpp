#include "core/net/FetchSession.h"

#include <algorithm>
#include <cstdint>
#include <mutex>

#include <fmt/format.h>

#include "core/base/Text.h"
#include "core/net/CurlEasy.h"

namespace quillmar {

namespace {

// What the callbacks of one transfer know and decide.
struct TransferState {
    CURL* easy = nullptr;
    std::size_t cap = 0;
    FetchSession::Response response;
    bool tooLarge = false;
    bool stoppedAfterHeaders = false;
};

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r' || text.back() == '\n'))
        text.remove_suffix(1);
    return text;
}

// Called once per header line, the status line first and a blank line last. Returning fewer bytes than
// given stops the transfer: done for every answer outside 2xx (its body is never wanted) and for a
// declared length over the cap, which thereby fails before a byte of the body is read.
std::size_t onHeader(char* data, std::size_t size, std::size_t count, void* context)
{
    auto& state = *static_cast<TransferState*>(context);
    std::size_t length = size * count;
    std::string_view line(data, length);
    if (startsWithIgnoringAsciiCase(line, "http/")) {
        state.response.location.reset(); // a new response (after an interim 1xx) starts afresh
        return length;
    }
    if (startsWithIgnoringAsciiCase(line, "location:")) {
        state.response.location = std::string(trimmed(line.substr(9)));
        return length;
    }
    if (!trimmed(line).empty())
        return length;

    long status = 0;
    curl_easy_getinfo(state.easy, CURLINFO_RESPONSE_CODE, &status);
    if (status >= 100 && status < 200)
        return length;
    state.response.status = status;
    if (status < 200 || status > 299) {
        state.stoppedAfterHeaders = true;
        return 0;
    }
    curl_off_t declared = -1;
    curl_easy_getinfo(state.easy, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &declared);
    if (declared > 0 && static_cast<std::uint64_t>(declared) > state.cap) {
        state.tooLarge = true;
        return 0;
    }
    if (declared > 0)
        state.response.body.reserve(static_cast<std::size_t>(declared));
    return length;
}

// Appends the bytes as they arrive; the first byte beyond the cap stops the transfer.
std::size_t onBody(char* data, std::size_t size, std::size_t count, void* context)
{
    auto& state = *static_cast<TransferState*>(context);
    std::size_t length = size * count;
    if (length > state.cap - state.response.body.size()) {
        state.tooLarge = true;
        return 0;
    }
    state.response.body.append(data, length);
    return length;
}

// libcurl's detail when it gave one, else its general text, as a sentence.
std::string transportSentence(CURLcode code, const char* detail)
{
    std::string text = detail && *detail ? detail : curl_easy_strerror(code);
    while (!text.empty() && (text.back() == '\n' || text.back() == ' '))
        text.pop_back();
    if (text.empty())
        text = "The transfer failed";
    text.front() = asciiUpper(text.front());
    if (text.back() != '.')
        text += '.';
    return text;
}

bool isFixedAddress(std::string_view entry)
{
    // host:port:address, where the address may be a bracketed IPv6 literal with colons of its own.
    auto first = entry.find(':');
    if (first == std::string_view::npos || first == 0)
        return false;
    auto second = entry.find(':', first + 1);
    if (second == std::string_view::npos || second == first + 1 || second + 1 >= entry.size())
        return false;
    auto port = entry.substr(first + 1, second - first - 1);
    return port.size() <= 5 && std::all_of(port.begin(), port.end(), [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

Result<std::unique_ptr<FetchSession>> FetchSession::create(Options options)
{
    static std::once_flag initialised;
    static CURLcode initialisation = CURLE_OK;
    std::call_once(initialised, [] { initialisation = curl_global_init(CURL_GLOBAL_DEFAULT); });
    if (initialisation != CURLE_OK)
        return Error { "net.unavailable", "The network library could not start.", curl_easy_strerror(initialisation) };

    std::unique_ptr<FetchSession> session(new FetchSession());
    session->m_share = CurlShare::create();
    if (!session->m_share)
        return Error { "net.unavailable", "The network library could not start.", "share" };
    for (const auto& entry : options.fixedAddresses) {
        if (!isFixedAddress(entry)) {
            return Error { "net.address",
                fmt::format("The address mapping \"{}\" is not HOST:PORT:ADDRESS.", entry), entry };
        }
        if (!session->m_fixedAddresses.append(entry.c_str()))
            return Error { "net.unavailable", "The network library could not start.", "resolve list" };
    }
    session->m_bypassProxies = !options.fixedAddresses.empty();
    session->m_trustAnchors = std::move(options.extraTrustAnchors);
    return session;
}

std::variant<FetchSession::Response, FetchFailure> FetchSession::get(
    const Url& url, std::size_t cap, std::chrono::milliseconds timeout) const
{
    CurlEasy handle;
    CURL* easy = handle.get();
    CurlHeaderList headers;
    if (!easy || !headers.append("Accept: */*"))
        return FetchFailure::transport("The network library ran out of memory.");

    TransferState state;
    state.easy = easy;
    state.cap = cap;
    char detail[CURL_ERROR_SIZE] = {};

    curl_easy_setopt(easy, CURLOPT_URL, url.text().c_str());
    curl_easy_setopt(easy, CURLOPT_ERRORBUFFER, detail);
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy, CURLOPT_SHARE, m_share->get());
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "https");
    curl_easy_setopt(easy, CURLOPT_REDIR_PROTOCOLS_STR, "https");
    curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 0L);
    curl_easy_setopt(easy, CURLOPT_HTTPGET, 1L);
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, headers.get());
    curl_easy_setopt(easy, CURLOPT_USERAGENT, "Quillmar");
    curl_easy_setopt(easy, CURLOPT_NETRC, static_cast<long>(CURL_NETRC_IGNORED));
    curl_easy_setopt(easy, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    curl_easy_setopt(easy, CURLOPT_SSL_VERIFYPEER, 1L);
    curl_easy_setopt(easy, CURLOPT_SSL_VERIFYHOST, 2L);
    curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(std::chrono::milliseconds(connectTimeout).count()));
    curl_easy_setopt(easy, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(easy, CURLOPT_LOW_SPEED_TIME, static_cast<long>(stallTimeout.count()));
    curl_easy_setopt(easy, CURLOPT_TIMEOUT_MS, static_cast<long>(std::max<std::chrono::milliseconds::rep>(timeout.count(), 1)));
    // Behind a proxy the tunnel's own answer ("200 Connection established" and its blank line) comes first;
    // kept out of the callback, it cannot be taken for the end of the server's answer.
    curl_easy_setopt(easy, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, &onHeader);
    curl_easy_setopt(easy, CURLOPT_HEADERDATA, &state);
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &onBody);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, &state);
    if (m_fixedAddresses.get())
        curl_easy_setopt(easy, CURLOPT_RESOLVE, m_fixedAddresses.get());
    if (m_bypassProxies)
        curl_easy_setopt(easy, CURLOPT_NOPROXY, "*");
    if (!m_trustAnchors.empty()) {
        // A blob replaces libcurl's CA file but not its CA folder, which holds the system's store.
        curl_blob anchors { const_cast<char*>(m_trustAnchors.data()), m_trustAnchors.size(), CURL_BLOB_COPY };
        curl_easy_setopt(easy, CURLOPT_CAINFO_BLOB, &anchors);
    }

    CURLcode code = curl_easy_perform(easy);
    if (state.tooLarge)
        return FetchFailure::tooLarge();
    if (state.stoppedAfterHeaders)
        return std::move(state.response);
    if (code == CURLE_WEIRD_SERVER_REPLY || code == CURLE_UNSUPPORTED_PROTOCOL)
        return FetchFailure::badResponse();
    if (code != CURLE_OK)
        return FetchFailure::transport(transportSentence(code, detail));
    if (state.response.status == 0)
        return FetchFailure::badResponse();
    return std::move(state.response);
}

} // namespace quillmar
