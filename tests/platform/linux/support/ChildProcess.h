#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace quillmar::testing {

// A program started for a test, with its standard output and error read through pipes. Stopped (SIGTERM,
// then SIGKILL) and reaped when destroyed, so a failing test leaves nothing behind; the child also gets
// SIGTERM when the test process dies.
class ChildProcess final {
public:
    using Deadline = std::chrono::steady_clock::time_point;

    // The deadline for waiting on a program's output: generous, since the machine may be loaded.
    static Deadline deadline() { return std::chrono::steady_clock::now() + std::chrono::seconds(10); }

    // Starts `arguments[0]` (searched in PATH) with `environment` added to the test's; `keepFd` stays open
    // in the child. None when it cannot be started.
    static std::optional<ChildProcess> start(const std::vector<std::string>& arguments,
        const std::vector<std::string>& environment = {}, int keepFd = -1);

    ChildProcess(ChildProcess&& other) noexcept;
    ChildProcess& operator=(ChildProcess&&) = delete;
    ~ChildProcess();

    // The next line (without its newline) of standard output, or of standard error; none at the end or
    // when the deadline passes first.
    std::optional<std::string> readLine(Deadline deadline);
    std::optional<std::string> readErrorLine(Deadline deadline);

    // Sends `signal`; then `wait` reaps the child and gives its exit code (128 + signal when killed),
    // none when the deadline passes first.
    void signal(int number) const;
    std::optional<int> wait(Deadline deadline);

    pid_t pid() const { return m_pid; }

private:
    ChildProcess(pid_t pid, int out, int err) : m_pid(pid), m_out(out), m_err(err) { }
    static std::optional<std::string> readLineFrom(int fd, std::string& buffer, Deadline deadline);

    pid_t m_pid = -1;
    int m_out = -1;
    int m_err = -1;
    std::string m_outBuffer;
    std::string m_errBuffer;
};

// Whether `program` is an executable in PATH.
bool isInstalled(const std::string& program);

// Runs `arguments` to its end within `timeout`; the exit code, or none when it could not run or took longer.
std::optional<int> runProgram(const std::vector<std::string>& arguments, const std::vector<std::string>& environment,
    std::chrono::milliseconds timeout);

} // namespace quillmar::testing
