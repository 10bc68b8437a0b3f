#pragma once

#include <condition_variable>
#include <cstddef>
#include <map>
#include <mutex>
#include <string>

namespace quillmar {

// Lets at most `perHost` transfers to one host (a "host:port" key) run at the same time; the others wait
// their turn in `enter`. Every transfer ends within its own time-out, so a wait here is bounded too.
class HostGate final {
public:
    explicit HostGate(std::size_t perHost) : m_perHost(perHost) { }

    // Holds one of the host's places until destroyed.
    class Pass final {
    public:
        Pass(HostGate& gate, std::string host);
        ~Pass();
        Pass(const Pass&) = delete;
        Pass& operator=(const Pass&) = delete;

    private:
        HostGate& m_gate;
        std::string m_host;
    };

    Pass enter(std::string host) { return Pass(*this, std::move(host)); }

    // How many transfers to `host` hold a place now, and how many wait for one.
    std::size_t active(const std::string& host) const;
    std::size_t waiting(const std::string& host) const;

private:
    std::size_t m_perHost;
    mutable std::mutex m_mutex;
    std::condition_variable m_freed;
    std::map<std::string, std::size_t> m_active;
    std::map<std::string, std::size_t> m_waiting;
};

} // namespace quillmar
