#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quillmar::testing_support {

// What the local HTTPS server answers on one path. The defaults make "200 OK" with a correct
// Content-Length; each field lets a test script a server that misbehaves in one particular way.
struct HttpsRoute {
    enum class Framing {
        contentLength, // "Content-Length" (the true size unless `declaredLength` lies), then the body
        chunked, // "Transfer-Encoding: chunked", the body in pieces of `chunkSize` bytes, each written apart
        untilClose, // no length at all: the body ends when the connection closes
    };

    int status = 200;
    std::vector<std::pair<std::string, std::string>> headers;
    std::string body;
    Framing framing = Framing::contentLength;
    std::optional<std::size_t> declaredLength; // sent as Content-Length instead of the body's size
    std::size_t chunkSize = 0; // chunked: bytes per piece; zero sends one piece
    std::optional<std::string> raw; // written verbatim instead of any response (a server that is not HTTP)

    static HttpsRoute ok(std::string body)
    {
        HttpsRoute route;
        route.body = std::move(body);
        return route;
    }

    static HttpsRoute withStatus(int status, std::string body = {})
    {
        HttpsRoute route;
        route.status = status;
        route.body = std::move(body);
        return route;
    }

    static HttpsRoute redirect(std::string location, int status = 302)
    {
        HttpsRoute route;
        route.status = status;
        route.headers.emplace_back("Location", std::move(location));
        return route;
    }
};

} // namespace quillmar::testing_support
