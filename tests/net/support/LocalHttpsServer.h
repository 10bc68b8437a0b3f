#pragma once

#include <atomic>
#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <openssl/ssl.h>

#include "core/base/Result.h"
#include "tests/net/support/HttpsRoute.h"

namespace quillmar::testing_support {

// One request as the server read it: the method, the request target ("/feed.xml") and the header lines with
// their names lower-cased, in the order received.
struct RecordedRequest {
    std::string method;
    std::string target;
    std::vector<std::pair<std::string, std::string>> headers;

    // The first header of that (lower-case) name; empty when absent.
    std::string header(std::string_view name) const;
};

// An HTTPS/1.1 server on 127.0.0.1 and a port the system picks, on its own thread, for tests that need a
// real TLS peer without any network beyond the loopback interface. Its certificate is issued at start by a
// certificate authority made in memory for the given host names, so a client that adds `caPem()` as a trust
// anchor and maps the names to 127.0.0.1 (`resolveEntry`) reaches it under a real-looking host name.
//
// Each connection carries one request and is closed after the response. Every socket wait has a deadline
// (`ioDeadlineSeconds`), so a client that stalls cannot keep the server, or the test, from finishing. Paths
// without a route answer 404. The process ignores SIGPIPE from the server's start on: a client that gives
// up mid-body must not kill the test.
class LocalHttpsServer final {
public:
    static constexpr int ioDeadlineSeconds = 5;

    static Result<std::unique_ptr<LocalHttpsServer>> start(
        std::vector<std::string> hostNames = { "feeds.example.com", "downloads.example.net" });
    ~LocalHttpsServer();

    LocalHttpsServer(const LocalHttpsServer&) = delete;
    LocalHttpsServer& operator=(const LocalHttpsServer&) = delete;

    // Adds or replaces the answer for `path` (the request target without any query).
    void route(const std::string& path, HttpsRoute answer);

    int port() const { return m_port; }
    const std::string& caPem() const { return m_caPem; }

    // "https://<host>:<port><path>".
    std::string url(std::string_view host, std::string_view path) const;
    // "<host>:<port>:127.0.0.1", the form a client's fixed host-to-address table takes.
    std::string resolveEntry(std::string_view host) const;

    // How many TLS connections were accepted and how many requests were read, in all or on one path.
    std::size_t connectionCount() const { return m_connections.load(); }
    std::size_t requestCount() const;
    std::size_t requestCount(std::string_view path) const;
    std::vector<RecordedRequest> requests() const;

private:
    LocalHttpsServer() = default;

    void acceptLoop();
    void serve(int socket);
    HttpsRoute answerFor(const std::string& path) const;

    std::vector<std::string> m_hostNames;
    std::string m_caPem;
    std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)> m_context { nullptr, &SSL_CTX_free };
    int m_listener = -1;
    int m_port = 0;
    std::atomic<bool> m_stopping { false };
    std::atomic<std::size_t> m_connections { 0 };
    std::thread m_acceptor;

    mutable std::mutex m_mutex;
    std::map<std::string, HttpsRoute, std::less<>> m_routes;
    std::vector<RecordedRequest> m_requests;
    std::vector<std::thread> m_workers;
};

} // namespace quillmar::testing_support
