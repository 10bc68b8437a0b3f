#include "tests/net/support/LocalConnectProxy.h"

#include <chrono>
#include <cstdint>
#include <csignal>
#include <string_view>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <fmt/format.h>

namespace quillmar::testing_support {

namespace {

constexpr std::size_t maximumRequestHead = 16 * 1024;
constexpr int acceptPollMilliseconds = 50;

using Clock = std::chrono::steady_clock;

Error proxyError(const char* what)
{
    return Error { "test.proxy", "The local proxy could not start.", what };
}

int millisecondsLeft(Clock::time_point deadline)
{
    auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return left > 0 ? static_cast<int>(left) : 0;
}

// Waits until `socket` is readable or the deadline passes; false on time-out or error.
bool waitReadable(int socket, Clock::time_point deadline)
{
    pollfd waiting { socket, POLLIN, 0 };
    return ::poll(&waiting, 1, millisecondsLeft(deadline)) > 0;
}

bool writeAll(int socket, std::string_view bytes)
{
    while (!bytes.empty()) {
        auto written = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (written <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

// Everything up to the blank line that ends the request head, and whatever followed it in the same reads
// (a client may send its TLS hello without waiting for the answer); empty on time-out or hang-up.
std::string readHead(int socket, Clock::time_point deadline, std::string& rest)
{
    std::string received;
    char buffer[4096];
    while (received.find("\r\n\r\n") == std::string::npos) {
        if (received.size() > maximumRequestHead || !waitReadable(socket, deadline))
            return {};
        auto count = ::recv(socket, buffer, sizeof buffer, 0);
        if (count <= 0)
            return {};
        received.append(buffer, static_cast<std::size_t>(count));
    }
    auto end = received.find("\r\n\r\n");
    rest = received.substr(end + 4);
    return received.substr(0, end);
}

int connectToLoopback(int port)
{
    int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (socket < 0)
        return -1;
    timeval deadline { LocalConnectProxy::tunnelDeadlineSeconds, 0 };
    ::setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &deadline, sizeof deadline);
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(socket, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
        ::close(socket);
        return -1;
    }
    return socket;
}

// Copies bytes both ways until either side hangs up or the deadline passes.
void relay(int client, int server, Clock::time_point deadline)
{
    char buffer[16 * 1024];
    while (true) {
        pollfd sides[2] = { { client, POLLIN, 0 }, { server, POLLIN, 0 } };
        if (::poll(sides, 2, millisecondsLeft(deadline)) <= 0)
            return;
        for (int index = 0; index < 2; ++index) {
            if (!sides[index].revents)
                continue;
            auto count = ::recv(sides[index].fd, buffer, sizeof buffer, 0);
            if (count <= 0 || !writeAll(sides[1 - index].fd, std::string_view(buffer, static_cast<std::size_t>(count))))
                return;
        }
    }
}

} // namespace

Result<std::unique_ptr<LocalConnectProxy>> LocalConnectProxy::start(int targetPort)
{
    std::signal(SIGPIPE, SIG_IGN);
    std::unique_ptr<LocalConnectProxy> proxy(new LocalConnectProxy());
    proxy->m_targetPort = targetPort;
    proxy->m_listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (proxy->m_listener < 0)
        return proxyError("socket");
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_port = 0;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    if (::bind(proxy->m_listener, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0
        || ::listen(proxy->m_listener, 16) != 0
        || ::getsockname(proxy->m_listener, reinterpret_cast<sockaddr*>(&address), &length) != 0)
        return proxyError("listen");
    proxy->m_port = ntohs(address.sin_port);
    proxy->m_acceptor = std::thread([raw = proxy.get()] { raw->acceptLoop(); });
    return proxy;
}

LocalConnectProxy::~LocalConnectProxy()
{
    m_stopping = true;
    if (m_acceptor.joinable())
        m_acceptor.join();
    if (m_listener >= 0)
        ::close(m_listener);
}

std::string LocalConnectProxy::url() const
{
    return fmt::format("http://127.0.0.1:{}", m_port);
}

std::vector<std::string> LocalConnectProxy::tunnels() const
{
    std::lock_guard lock(m_mutex);
    return m_tunnels;
}

void LocalConnectProxy::acceptLoop()
{
    while (!m_stopping) {
        pollfd waiting { m_listener, POLLIN, 0 };
        if (::poll(&waiting, 1, acceptPollMilliseconds) <= 0)
            continue;
        int client = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (client < 0)
            continue;
        serve(client);
        ::close(client);
    }
}

void LocalConnectProxy::serve(int client)
{
    auto deadline = Clock::now() + std::chrono::seconds(tunnelDeadlineSeconds);
    timeval sendDeadline { tunnelDeadlineSeconds, 0 };
    ::setsockopt(client, SOL_SOCKET, SO_SNDTIMEO, &sendDeadline, sizeof sendDeadline);

    std::string early;
    auto head = readHead(client, deadline, early);
    auto requestLine = std::string_view(head).substr(0, head.find("\r\n"));
    if (requestLine.substr(0, 8) != "CONNECT ") {
        if (!head.empty())
            writeAll(client, "HTTP/1.1 405 Method Not Allowed\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
        return;
    }
    auto target = requestLine.substr(8);
    {
        std::lock_guard lock(m_mutex);
        m_tunnels.emplace_back(target.substr(0, target.find(' ')));
    }
    int server = connectToLoopback(m_targetPort);
    if (server < 0) {
        writeAll(client, "HTTP/1.1 502 Bad Gateway\r\nContent-Length: 0\r\n\r\n");
        return;
    }
    // Headers and a blank line, as real proxies send them: the client must not take them for its answer.
    if (writeAll(client, "HTTP/1.1 200 Connection established\r\nProxy-Agent: quillmar-test\r\n\r\n")
        && writeAll(server, early))
        relay(client, server, deadline);
    ::close(server);
}

} // namespace quillmar::testing_support
