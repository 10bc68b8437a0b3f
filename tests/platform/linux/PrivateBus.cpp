#include "tests/platform/linux/PrivateBus.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fstream>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillmar {

namespace {

constexpr const char* configuration = R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:tmpdir=/tmp</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

} // namespace

PrivateBus::PrivateBus()
{
    auto configFile = m_folder.path() / "bus.conf";
    std::ofstream(configFile) << configuration;
    std::string configArgument = "--config-file=" + configFile.string();

    int output[2];
    if (::pipe2(output, O_CLOEXEC) != 0) {
        m_failure = std::string("pipe: ") + std::strerror(errno);
        return;
    }
    m_pid = ::fork();
    if (m_pid == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        ::dup2(output[1], STDOUT_FILENO);
        const char* arguments[] = { "dbus-daemon", configArgument.c_str(), "--print-address", "--nofork", nullptr };
        ::execvp(arguments[0], const_cast<char* const*>(arguments));
        ::_exit(127);
    }
    ::close(output[1]);
    if (m_pid < 0) {
        m_failure = std::string("fork: ") + std::strerror(errno);
        ::close(output[0]);
        return;
    }

    auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    std::string line;
    while (line.find('\n') == std::string::npos) {
        auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        pollfd ready { output[0], POLLIN, 0 };
        if (left.count() <= 0 || ::poll(&ready, 1, static_cast<int>(left.count())) <= 0) {
            m_failure = "dbus-daemon gave no address within ten seconds";
            break;
        }
        char buffer[256];
        auto count = ::read(output[0], buffer, sizeof buffer);
        if (count <= 0) {
            m_failure = "dbus-daemon ended without an address (is it installed?)";
            break;
        }
        line.append(buffer, static_cast<std::size_t>(count));
    }
    ::close(output[0]);
    if (m_failure.empty())
        m_address = line.substr(0, line.find('\n'));
}

PrivateBus::~PrivateBus()
{
    if (m_pid <= 0)
        return;
    ::kill(m_pid, SIGTERM);
    int status = 0;
    while (::waitpid(m_pid, &status, 0) < 0 && errno == EINTR) { }
}

} // namespace quillmar
