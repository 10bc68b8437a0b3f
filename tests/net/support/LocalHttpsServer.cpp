#include "tests/net/support/LocalHttpsServer.h"

#include <algorithm>
#include <cctype>
#include <csignal>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <fmt/format.h>

#include "tests/net/support/TestCertificateAuthority.h"

namespace quillmar::testing_support {

namespace {

constexpr std::size_t maximumRequestHead = 64 * 1024;
constexpr int acceptPollMilliseconds = 50;

Error serverError(const char* what)
{
    return Error { "test.server", "The local HTTPS server could not start.", what };
}

std::string lowerCased(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
        [](unsigned char character) { return static_cast<char>(std::tolower(character)); });
    return text;
}

std::string trimmed(std::string_view text)
{
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r'))
        text.remove_suffix(1);
    return std::string(text);
}

const char* reasonPhrase(int status)
{
    switch (status) {
    case 200: return "OK";
    case 301: return "Moved Permanently";
    case 302: return "Found";
    case 303: return "See Other";
    case 307: return "Temporary Redirect";
    case 308: return "Permanent Redirect";
    case 404: return "Not Found";
    case 410: return "Gone";
    case 500: return "Internal Server Error";
    case 503: return "Service Unavailable";
    default: return "Status";
    }
}

// Writes all of `bytes`; false once the peer has gone (it may hang up mid-body on purpose).
bool writeAll(SSL* ssl, std::string_view bytes)
{
    while (!bytes.empty()) {
        int chunk = static_cast<int>(std::min<std::size_t>(bytes.size(), 16 * 1024));
        int written = SSL_write(ssl, bytes.data(), chunk);
        if (written <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

// Reads up to the blank line that ends a request head; empty on time-out, hang-up or an oversized head.
std::string readRequestHead(SSL* ssl)
{
    std::string head;
    char buffer[4096];
    while (head.find("\r\n\r\n") == std::string::npos) {
        if (head.size() > maximumRequestHead)
            return {};
        int count = SSL_read(ssl, buffer, sizeof buffer);
        if (count <= 0)
            return {};
        head.append(buffer, static_cast<std::size_t>(count));
    }
    return head.substr(0, head.find("\r\n\r\n"));
}

RecordedRequest parseRequestHead(std::string_view head)
{
    RecordedRequest request;
    bool first = true;
    while (!head.empty()) {
        auto end = head.find("\r\n");
        auto line = head.substr(0, end);
        head = end == std::string_view::npos ? std::string_view() : head.substr(end + 2);
        if (first) {
            first = false;
            auto space = line.find(' ');
            request.method = std::string(line.substr(0, space));
            if (space != std::string_view::npos) {
                auto rest = line.substr(space + 1);
                request.target = std::string(rest.substr(0, rest.find(' ')));
            }
            continue;
        }
        auto colon = line.find(':');
        if (colon == std::string_view::npos)
            continue;
        request.headers.emplace_back(lowerCased(std::string(line.substr(0, colon))), trimmed(line.substr(colon + 1)));
    }
    return request;
}

void writeResponse(SSL* ssl, const HttpsRoute& answer)
{
    if (answer.raw) {
        writeAll(ssl, *answer.raw);
        return;
    }
    std::string head = fmt::format("HTTP/1.1 {} {}\r\n", answer.status, reasonPhrase(answer.status));
    for (const auto& [name, value] : answer.headers)
        head += fmt::format("{}: {}\r\n", name, value);
    switch (answer.framing) {
    case HttpsRoute::Framing::contentLength:
        head += fmt::format("Content-Length: {}\r\n", answer.declaredLength.value_or(answer.body.size()));
        break;
    case HttpsRoute::Framing::chunked:
        head += "Transfer-Encoding: chunked\r\n";
        break;
    case HttpsRoute::Framing::untilClose:
        break;
    }
    head += "Connection: close\r\n\r\n";
    if (!writeAll(ssl, head))
        return;
    if (answer.framing != HttpsRoute::Framing::chunked) {
        writeAll(ssl, answer.body);
        return;
    }
    std::string_view rest = answer.body;
    std::size_t piece = answer.chunkSize == 0 ? std::max<std::size_t>(rest.size(), 1) : answer.chunkSize;
    while (!rest.empty()) {
        auto part = rest.substr(0, piece);
        rest.remove_prefix(part.size());
        if (!writeAll(ssl, fmt::format("{:x}\r\n", part.size())) || !writeAll(ssl, part) || !writeAll(ssl, "\r\n"))
            return;
    }
    writeAll(ssl, "0\r\n\r\n");
}

} // namespace

std::string RecordedRequest::header(std::string_view name) const
{
    for (const auto& [headerName, value] : headers) {
        if (headerName == name)
            return value;
    }
    return {};
}

Result<std::unique_ptr<LocalHttpsServer>> LocalHttpsServer::start(std::vector<std::string> hostNames)
{
    std::signal(SIGPIPE, SIG_IGN);
    QUILLMAR_TRY_ASSIGN(auto authority, TestCertificateAuthority::create());
    QUILLMAR_TRY_ASSIGN(auto identity, authority.issue(hostNames));

    std::unique_ptr<LocalHttpsServer> server(new LocalHttpsServer());
    server->m_hostNames = std::move(hostNames);
    server->m_caPem = authority.certificatePem();
    server->m_context.reset(SSL_CTX_new(TLS_server_method()));
    if (!server->m_context)
        return serverError("tls context");
    if (SSL_CTX_use_certificate(server->m_context.get(), identity.certificate.get()) != 1
        || SSL_CTX_use_PrivateKey(server->m_context.get(), identity.key.get()) != 1)
        return serverError("server identity");

    server->m_listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (server->m_listener < 0)
        return serverError("socket");
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_port = 0;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    if (::bind(server->m_listener, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0
        || ::listen(server->m_listener, 64) != 0
        || ::getsockname(server->m_listener, reinterpret_cast<sockaddr*>(&address), &length) != 0)
        return serverError("listen");
    server->m_port = ntohs(address.sin_port);
    server->m_acceptor = std::thread([raw = server.get()] { raw->acceptLoop(); });
    return server;
}

LocalHttpsServer::~LocalHttpsServer()
{
    m_stopping = true;
    if (m_acceptor.joinable())
        m_acceptor.join();
    std::vector<std::thread> workers;
    {
        std::lock_guard lock(m_mutex);
        workers.swap(m_workers);
    }
    // Each worker ends within its socket deadlines.
    for (auto& worker : workers)
        worker.join();
    if (m_listener >= 0)
        ::close(m_listener);
}

void LocalHttpsServer::route(const std::string& path, HttpsRoute answer)
{
    std::lock_guard lock(m_mutex);
    m_routes.insert_or_assign(path, std::move(answer));
}

std::string LocalHttpsServer::url(std::string_view host, std::string_view path) const
{
    return fmt::format("https://{}:{}{}", host, m_port, path);
}

std::string LocalHttpsServer::resolveEntry(std::string_view host) const
{
    return fmt::format("{}:{}:127.0.0.1", host, m_port);
}

std::size_t LocalHttpsServer::requestCount() const
{
    std::lock_guard lock(m_mutex);
    return m_requests.size();
}

std::size_t LocalHttpsServer::requestCount(std::string_view path) const
{
    std::lock_guard lock(m_mutex);
    return static_cast<std::size_t>(std::count_if(m_requests.begin(), m_requests.end(),
        [path](const RecordedRequest& request) { return request.target.substr(0, request.target.find('?')) == path; }));
}

std::vector<RecordedRequest> LocalHttpsServer::requests() const
{
    std::lock_guard lock(m_mutex);
    return m_requests;
}

HttpsRoute LocalHttpsServer::answerFor(const std::string& path) const
{
    std::lock_guard lock(m_mutex);
    auto found = m_routes.find(path);
    return found != m_routes.end() ? found->second : HttpsRoute::withStatus(404, "no route\n");
}

void LocalHttpsServer::acceptLoop()
{
    while (!m_stopping) {
        pollfd waiting { m_listener, POLLIN, 0 };
        if (::poll(&waiting, 1, acceptPollMilliseconds) <= 0)
            continue;
        int socket = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0)
            continue;
        timeval deadline { ioDeadlineSeconds, 0 };
        ::setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &deadline, sizeof deadline);
        ::setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &deadline, sizeof deadline);
        ++m_connections;
        std::lock_guard lock(m_mutex);
        m_workers.emplace_back([this, socket] { serve(socket); });
    }
}

void LocalHttpsServer::serve(int socket)
{
    SSL* ssl = SSL_new(m_context.get());
    if (ssl && SSL_set_fd(ssl, socket) == 1 && SSL_accept(ssl) == 1) {
        auto head = readRequestHead(ssl);
        if (!head.empty()) {
            auto request = parseRequestHead(head);
            auto path = request.target.substr(0, request.target.find('?'));
            {
                std::lock_guard lock(m_mutex);
                m_requests.push_back(std::move(request));
            }
            writeResponse(ssl, answerFor(path));
            SSL_shutdown(ssl);
        }
    }
    SSL_free(ssl);
    ::close(socket);
}

} // namespace quillmar::testing_support
