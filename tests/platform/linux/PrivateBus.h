#pragma once

#include <string>
#include <sys/types.h>

#include "tests/support/TemporaryFolder.h"

namespace quillmar {

// A dbus-daemon of the test's own, started with a configuration that activates no services (so that no real
// notification server or logind is ever started by a call), stopped and reaped at the end of scope. The
// daemon dies with the test process too, should that crash.
class PrivateBus final {
public:
    // Waits at most ten seconds for the daemon's address; `address()` is empty and `failure()` says why when
    // it did not come.
    PrivateBus();
    ~PrivateBus();

    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    const std::string& address() const { return m_address; }
    const std::string& failure() const { return m_failure; }

private:
    TemporaryFolder m_folder;
    pid_t m_pid = -1;
    std::string m_address;
    std::string m_failure;
};

} // namespace quillmar
