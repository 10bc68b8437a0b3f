#include "core/net/HostGate.h"

namespace quillmar {

HostGate::Pass::Pass(HostGate& gate, std::string host)
    : m_gate(gate)
    , m_host(std::move(host))
{
    std::unique_lock lock(m_gate.m_mutex);
    if (m_gate.m_active[m_host] >= m_gate.m_perHost) {
        ++m_gate.m_waiting[m_host];
        m_gate.m_freed.wait(lock, [this] { return m_gate.m_active[m_host] < m_gate.m_perHost; });
        if (--m_gate.m_waiting[m_host] == 0)
            m_gate.m_waiting.erase(m_host);
    }
    ++m_gate.m_active[m_host];
}

HostGate::Pass::~Pass()
{
    {
        std::lock_guard lock(m_gate.m_mutex);
        if (--m_gate.m_active[m_host] == 0)
            m_gate.m_active.erase(m_host);
    }
    m_gate.m_freed.notify_all();
}

namespace {

std::size_t countOf(const std::map<std::string, std::size_t>& counts, const std::string& host)
{
    auto found = counts.find(host);
    return found == counts.end() ? 0 : found->second;
}

} // namespace

std::size_t HostGate::active(const std::string& host) const
{
    std::lock_guard lock(m_mutex);
    return countOf(m_active, host);
}

std::size_t HostGate::waiting(const std::string& host) const
{
    std::lock_guard lock(m_mutex);
    return countOf(m_waiting, host);
}

} // namespace quillmar
