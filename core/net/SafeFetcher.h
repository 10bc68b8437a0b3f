#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/base/Result.h"
#include "core/net/FetchFailure.h"
#include "core/net/FetchResult.h"
#include "core/net/FetchOptions.h"
#include "core/net/HostGate.h"
#include "core/net/Url.h"

namespace quillmar {

class FetchSession;

// One GET that `SafeFetcher::fetchAll` runs: the address and the most bytes its body may have.
struct FetchRequest {
    std::string url;
    std::size_t cap = 0;
};

// The one hardened HTTPS fetcher for outside data (update feeds, store lookups). The service container owns
// one; every method may be called from any thread, and many fetches may run at once.
class SafeFetcher final {
public:
    using Failure = FetchFailure;
    using Options = FetchOptions;

    // At most this many transfers to one host run at once; further ones wait for a place.
    static constexpr std::size_t connectionsPerHost = 2;
    // A whole fetch, redirects included, ends within this time.
    static constexpr std::chrono::seconds resourceTimeout { 20 };
    // Redirects followed in one fetch; the next one is refused.
    static constexpr int maximumRedirects = 5;

    // Fails when the network library cannot start or an address mapping is malformed.
    static Result<std::unique_ptr<SafeFetcher>> create(Options options = {});
    ~SafeFetcher();
    SafeFetcher(const SafeFetcher&) = delete;
    SafeFetcher& operator=(const SafeFetcher&) = delete;

    // The address policy: https only; no user, password or fragment; a host of at least two labels, each
    // 1-63 ASCII letters, digits or inner hyphens, at least one label not all digits (so no IPv4 literal),
    // never "localhost", ".localhost" or ".local". IPv6 literals and Unicode host names are refused; the port
    // is not examined. The host is judged as the text writes it, so a percent-encoded one is refused for its
    // "%"; text that is not a URL (see `Url::parse`, which never guesses a host) is refused.
    static bool isAllowed(std::string_view url);
    static bool isAllowed(const Url& url);

    // One GET of `url` whose body may have at most `cap` bytes (exactly `cap` is accepted). Refused
    // addresses fail `blocked` before any traffic. Redirects (301, 302, 303, 307, 308) are followed while
    // their target, resolved against the current address, passes the policy and no more than five have
    // been seen; a refused redirect leaves its own answer as the result, which then fails `http(3xx)`.
    // Then 404 and 410 fail `notFound`, any other status outside 200-299 fails `http(status)`, and a body
    // declared or streamed beyond `cap` fails `tooLarge`. Blocks the calling thread until done.
    FetchResult fetch(std::string_view url, std::size_t cap);

    // Runs `requests` on at most `parallel` threads of their own (at least one) and returns their results in
    // the order of `requests`. Blocks until all are done; the per-host limit still holds.
    std::vector<FetchResult> fetchAll(const std::vector<FetchRequest>& requests, std::size_t parallel = 4);

private:
    explicit SafeFetcher(std::unique_ptr<FetchSession> session);

    std::unique_ptr<FetchSession> m_session;
    HostGate m_gate { connectionsPerHost };
};

} // namespace quillmar
