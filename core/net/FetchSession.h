#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "core/base/Result.h"
#include "core/net/CurlHeaderList.h"
#include "core/net/CurlShare.h"
#include "core/net/FetchFailure.h"
#include "core/net/FetchOptions.h"
#include "core/net/Url.h"

namespace quillmar {

// The libcurl side of the fetcher: how every transfer is configured, and one GET without redirects.
//
// Every transfer: https only (redirects are never followed by libcurl), TLS 1.2 or later with the peer
// verified, no cookie engine, no .netrc and no authentication, no cache (libcurl keeps none), "Accept: */*",
// connecting within `connectTimeout`, giving up when no byte has arrived for `stallTimeout`, and finishing
// within the time-out the caller gives. A transfer never waits for connectivity: an unreachable host fails
// at once. A proxy named by the environment (https_proxy, no_proxy) is used through a CONNECT tunnel, so
// TLS still runs end to end with the target, which is what the address policy has judged. Callable from
// many threads at once; each call has its own handle.
class FetchSession final {
public:
    static constexpr std::chrono::seconds connectTimeout { 10 };
    static constexpr std::chrono::seconds stallTimeout { 10 };

    using Options = FetchOptions;

    // What one GET gave before any status rule: the status, the raw Location header, and the body, which
    // is read only for a 2xx answer (and then at most `cap` bytes, else the hop fails `tooLarge`).
    struct Response {
        long status = 0;
        std::optional<std::string> location;
        std::string body;
    };

    // Fails when libcurl cannot start or an address entry is not "host:port:address".
    static Result<std::unique_ptr<FetchSession>> create(Options options);

    // One GET of `url`. Fails `tooLarge` (declared length or streamed bytes over `cap`), `badResponse` (the
    // peer did not answer in HTTP), or `transport` with libcurl's sentence.
    std::variant<Response, FetchFailure> get(const Url& url, std::size_t cap, std::chrono::milliseconds timeout) const;

private:
    FetchSession() = default;

    std::unique_ptr<CurlShare> m_share;
    std::string m_trustAnchors;
    CurlHeaderList m_fixedAddresses;
    bool m_bypassProxies = false;
};

} // namespace quillmar
