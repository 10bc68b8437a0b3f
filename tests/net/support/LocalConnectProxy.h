#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "core/base/Result.h"

namespace quillmar::testing_support {

// A forward proxy that speaks only CONNECT, on 127.0.0.1 and a port the system picks, as company networks
// put one between their users and the internet. Whatever host a client asks for, the tunnel goes to
// 127.0.0.1:`targetPort` (a local test server), so nothing ever leaves the loopback interface; the requested
// "host:port" is recorded. Any other method is answered 405.
//
// Connections are served one after another on the proxy's own thread, and each one ends within
// `tunnelDeadlineSeconds` (head, connect and relay together), so a stalled client cannot hold up the test.
class LocalConnectProxy final {
public:
    static constexpr int tunnelDeadlineSeconds = 5;

    static Result<std::unique_ptr<LocalConnectProxy>> start(int targetPort);
    ~LocalConnectProxy();

    LocalConnectProxy(const LocalConnectProxy&) = delete;
    LocalConnectProxy& operator=(const LocalConnectProxy&) = delete;

    // "http://127.0.0.1:<port>", the form the proxy variables take.
    std::string url() const;

    // The "host:port" of every CONNECT request, in the order received.
    std::vector<std::string> tunnels() const;

private:
    LocalConnectProxy() = default;

    void acceptLoop();
    void serve(int client);

    int m_targetPort = 0;
    int m_listener = -1;
    int m_port = 0;
    std::atomic<bool> m_stopping { false };
    std::thread m_acceptor;

    mutable std::mutex m_mutex;
    std::vector<std::string> m_tunnels;
};

} // namespace quillmar::testing_support
