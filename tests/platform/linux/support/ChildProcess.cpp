#include "tests/platform/linux/support/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <utility>

namespace quillmar::testing {

std::optional<ChildProcess> ChildProcess::start(const std::vector<std::string>& arguments,
    const std::vector<std::string>& environment, int keepFd)
{
    int out[2];
    int err[2];
    if (arguments.empty() || ::pipe2(out, O_CLOEXEC) != 0)
        return std::nullopt;
    if (::pipe2(err, O_CLOEXEC) != 0) {
        ::close(out[0]);
        ::close(out[1]);
        return std::nullopt;
    }
    pid_t parent = ::getpid();
    pid_t pid = ::fork();
    if (pid == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (::getppid() != parent)
            ::_exit(127);
        ::dup2(out[1], STDOUT_FILENO);
        ::dup2(err[1], STDERR_FILENO);
        if (keepFd >= 0)
            ::fcntl(keepFd, F_SETFD, 0);
        for (const auto& setting : environment) {
            auto equals = setting.find('=');
            ::setenv(setting.substr(0, equals).c_str(), setting.substr(equals + 1).c_str(), 1);
        }
        std::vector<char*> argv;
        for (const auto& argument : arguments)
            argv.push_back(const_cast<char*>(argument.c_str()));
        argv.push_back(nullptr);
        ::execvp(argv[0], argv.data());
        ::_exit(127);
    }
    ::close(out[1]);
    ::close(err[1]);
    if (pid < 0) {
        ::close(out[0]);
        ::close(err[0]);
        return std::nullopt;
    }
    return ChildProcess(pid, out[0], err[0]);
}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : m_pid(std::exchange(other.m_pid, -1))
    , m_out(std::exchange(other.m_out, -1))
    , m_err(std::exchange(other.m_err, -1))
    , m_outBuffer(std::move(other.m_outBuffer))
    , m_errBuffer(std::move(other.m_errBuffer))
{
}

ChildProcess::~ChildProcess()
{
    if (m_pid > 0) {
        ::kill(m_pid, SIGTERM);
        if (!wait(std::chrono::steady_clock::now() + std::chrono::seconds(5))) {
            ::kill(m_pid, SIGKILL);
            ::waitpid(m_pid, nullptr, 0);
        }
    }
    if (m_out >= 0)
        ::close(m_out);
    if (m_err >= 0)
        ::close(m_err);
}

std::optional<std::string> ChildProcess::readLineFrom(int fd, std::string& buffer, Deadline deadline)
{
    for (;;) {
        if (auto newline = buffer.find('\n'); newline != std::string::npos) {
            auto line = buffer.substr(0, newline);
            buffer.erase(0, newline + 1);
            return line;
        }
        auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0 || fd < 0)
            return std::nullopt;
        pollfd descriptor { fd, POLLIN, 0 };
        if (::poll(&descriptor, 1, static_cast<int>(left.count())) <= 0)
            return std::nullopt;
        char chunk[4096];
        auto count = ::read(fd, chunk, sizeof chunk);
        if (count <= 0)
            return std::nullopt;
        buffer.append(chunk, static_cast<std::size_t>(count));
    }
}

std::optional<std::string> ChildProcess::readLine(Deadline deadline)
{
    return readLineFrom(m_out, m_outBuffer, deadline);
}

std::optional<std::string> ChildProcess::readErrorLine(Deadline deadline)
{
    return readLineFrom(m_err, m_errBuffer, deadline);
}

void ChildProcess::signal(int number) const
{
    if (m_pid > 0)
        ::kill(m_pid, number);
}

std::optional<int> ChildProcess::wait(Deadline deadline)
{
    if (m_pid <= 0)
        return std::nullopt;
    // A pidfd becomes readable when the child ends.
    int pidfd = static_cast<int>(::syscall(SYS_pidfd_open, m_pid, 0));
    if (pidfd >= 0) {
        auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        pollfd descriptor { pidfd, POLLIN, 0 };
        int ready = ::poll(&descriptor, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0)));
        ::close(pidfd);
        if (ready <= 0)
            return std::nullopt;
    }
    int status = 0;
    if (::waitpid(m_pid, &status, 0) != m_pid)
        return std::nullopt;
    m_pid = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

bool isInstalled(const std::string& program)
{
    const char* path = std::getenv("PATH");
    std::istringstream folders(path ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        auto candidate = std::filesystem::path(folder) / program;
        if (::access(candidate.c_str(), X_OK) == 0)
            return true;
    }
    return false;
}

std::optional<int> runProgram(const std::vector<std::string>& arguments, const std::vector<std::string>& environment,
    std::chrono::milliseconds timeout)
{
    auto child = ChildProcess::start(arguments, environment);
    if (!child)
        return std::nullopt;
    return child->wait(std::chrono::steady_clock::now() + timeout);
}

} // namespace quillmar::testing
