#include "core/net/SafeFetcher.h"

#include "core/base/Text.h"
#include "core/net/FetchSession.h"
#include "core/runtime/ParallelFor.h"

#include <algorithm>
#include <string>
#include <variant>
#include <vector>

namespace quillmar {

namespace {

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

bool isRedirect(long status)
{
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

// The host a transfer to `url` connects to, as the per-host limit counts it.
std::string hostKey(const Url& url)
{
    return url.host() + ":" + url.port().value_or("443");
}

} // namespace

Result<std::unique_ptr<SafeFetcher>> SafeFetcher::create(Options options)
{
    QUILLMAR_TRY_ASSIGN(auto session, FetchSession::create(std::move(options)));
    return std::unique_ptr<SafeFetcher>(new SafeFetcher(std::move(session)));
}

SafeFetcher::SafeFetcher(std::unique_ptr<FetchSession> session)
    : m_session(std::move(session))
{
}

SafeFetcher::~SafeFetcher() = default;

FetchResult SafeFetcher::fetch(std::string_view url, std::size_t cap)
{
    auto current = Url::parse(url);
    if (!current || !isAllowed(*current))
        return Failure::blocked();

    using Clock = std::chrono::steady_clock;
    auto deadline = Clock::now() + resourceTimeout;
    // Only this call follows its redirects, one after another on this thread, so the count needs no lock.
    int redirectsSeen = 0;
    while (true) {
        auto remaining = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        if (remaining.count() <= 0)
            return Failure::transport("The request timed out.");
        std::variant<FetchSession::Response, Failure> hop;
        {
            auto pass = m_gate.enter(hostKey(*current));
            hop = m_session->get(*current, cap, remaining);
        }
        if (auto* failure = std::get_if<Failure>(&hop))
            return std::move(*failure);
        auto& response = std::get<FetchSession::Response>(hop);

        if (isRedirect(response.status) && response.location) {
            ++redirectsSeen;
            auto target = current->resolved(*response.location);
            if (redirectsSeen <= maximumRedirects && target && isAllowed(*target)) {
                current = std::move(target);
                continue;
            }
            // Refused: the answer that asked for the redirect is what this fetch sees.
        }
        if (response.status == 404 || response.status == 410)
            return Failure::notFound();
        if (response.status < 200 || response.status > 299)
            return Failure::http(response.status);
        return std::move(response.body);
    }
}

std::vector<FetchResult> SafeFetcher::fetchAll(const std::vector<FetchRequest>& requests, std::size_t parallel)
{
    std::vector<FetchResult> results(requests.size(), FetchResult(std::string()));
    parallelFor(requests.size(), parallel,
        [&](std::size_t index) { results[index] = fetch(requests[index].url, requests[index].cap); });
    return results;
}

bool SafeFetcher::isAllowed(std::string_view url)
{
    auto parsed = Url::parse(url);
    return parsed && isAllowed(*parsed);
}

bool SafeFetcher::isAllowed(const Url& url)
{
    if (asciiLower(url.scheme()) != "https")
        return false;
    if (url.user() || url.password() || url.fragment())
        return false;
    auto host = asciiLower(url.host());
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
