#pragma once

#include <string>

namespace quillmar {

// Why a fetch gave no body. The kinds, in order: the server answered with a status outside 200-299
// (`status` says which), the address or a redirect target was refused by the address policy before any
// traffic, the server says the resource is gone (404 or 410), the body would exceed the caller's cap, the
// peer did not answer in HTTP; and the transport's own errors (no route, TLS refused, time-out), whose
// `message` is libcurl's sentence.
struct FetchFailure {
    enum class Kind {
        http,
        blocked,
        notFound,
        tooLarge,
        badResponse,
        transport,
    };

    Kind kind = Kind::transport;
    long status = 0; // the HTTP status, for `http`
    std::string message; // what went wrong, for `transport`

    static FetchFailure http(long status) { return { Kind::http, status, {} }; }
    static FetchFailure blocked() { return { Kind::blocked, 0, {} }; }
    static FetchFailure notFound() { return { Kind::notFound, 0, {} }; }
    static FetchFailure tooLarge() { return { Kind::tooLarge, 0, {} }; }
    static FetchFailure badResponse() { return { Kind::badResponse, 0, {} }; }
    static FetchFailure transport(std::string message) { return { Kind::transport, 0, std::move(message) }; }

    // One line for people and logs: "blocked", "notFound", "tooLarge", "badResponse", "http 503", or the
    // transport's sentence.
    std::string description() const;

    friend bool operator==(const FetchFailure&, const FetchFailure&) = default;
};

} // namespace quillmar
