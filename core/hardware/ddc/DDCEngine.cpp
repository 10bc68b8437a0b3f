#include "core/hardware/ddc/DDCEngine.h"

#include <algorithm>
#include <array>
#include <cassert>

#include "core/base/Diagnostics.h"

namespace quillmar {

DDCEngine::DDCEngine(Runtime& runtime, I2CTransport& transport)
    : m_clock(runtime.clock())
    , m_transport(transport)
    , m_queue(runtime.makeSerialQueue(std::string(queueLabel)))
{
}

DDCEngine::~DDCEngine()
{
    m_queue.reset();
}

Result<std::vector<DDCDisplay>> DDCEngine::discover()
{
    return m_transport.externalDisplays();
}

void DDCEngine::write(std::uint8_t code, std::uint16_t value, const DDCServiceID& service, Completion completion)
{
    bool startDrain = false;
    {
        std::lock_guard lock(m_mutex);
        auto queued = std::find_if(m_pending.begin(), m_pending.end(),
            [&](const PendingWrite& write) { return write.service == service && write.code == code; });
        if (queued != m_pending.end()) {
            queued->value = value;
            if (completion) {
                queued->completion = [earlier = std::move(queued->completion), later = std::move(completion)](bool succeeded) {
                    if (earlier)
                        earlier(succeeded);
                    later(succeeded);
                };
            }
        } else {
            m_pending.push_back(PendingWrite { service, code, value, std::move(completion) });
        }
        if (!m_draining) {
            m_draining = true;
            startDrain = true;
        }
    }
    if (startDrain)
        m_queue->post([this] { drain(); });
}

void DDCEngine::read(const DDCServiceID& service, std::function<void(ReadOutcome)> completion, std::uint8_t code)
{
    m_queue->post([this, service, code, completion = std::move(completion)] {
        auto outcome = readNow(code, service);
        if (completion)
            completion(outcome);
    });
}

std::size_t DDCEngine::pendingCount() const
{
    std::lock_guard lock(m_mutex);
    return m_pending.size();
}

void DDCEngine::drain()
{
    for (;;) {
        PendingWrite next;
        {
            std::lock_guard lock(m_mutex);
            if (m_pending.empty()) {
                m_draining = false;
                return;
            }
            next = std::move(m_pending.front());
            m_pending.erase(m_pending.begin());
        }
        bool succeeded = transmit(DDCPacket::setRequest(next.code, next.value), next.service);
        if (!succeeded)
            diagnostic("ddc: set 0x{:02x} to {} on {} failed", next.code, next.value, next.service);
        if (next.completion)
            next.completion(succeeded);
    }
}

DDCEngine::ReadOutcome DDCEngine::readNow(std::uint8_t code, const DDCServiceID& service)
{
    assert(m_queue->isCurrent());
    auto request = DDCPacket::getRequest(code);
    for (int attempt = 0; attempt < readAttempts; ++attempt) {
        if (attempt > 0)
            m_clock.sleepFor(readRetryDelay);
        if (!transmit(request, service))
            continue;
        m_clock.sleepFor(replyDelay);
        std::array<std::uint8_t, DDCPacket::replyLength> reply {};
        if (!m_transport.read(service, DDCPacket::chipAddress, reply))
            continue;
        auto outcome = DDCPacket::parse(reply, code);
        if (outcome.status != ReadOutcome::Status::failed)
            return outcome;
    }
    diagnostic("ddc: no valid reply for 0x{:02x} from {} after {} attempts", code, service, readAttempts);
    return ReadOutcome::failed();
}

bool DDCEngine::transmit(std::span<const std::uint8_t> packet, const DDCServiceID& service)
{
    assert(m_queue->isCurrent());
    if (auto last = m_lastTransmission.find(service); last != m_lastTransmission.end()) {
        auto since = m_clock.uptime() - last->second;
        if (since < transmissionSpacing)
            m_clock.sleepFor(transmissionSpacing - since);
    }
    m_clock.sleepFor(writeDelay);
    bool first = m_transport.write(service, DDCPacket::chipAddress, DDCPacket::hostAddress, packet);
    // The second copy is deliberate, for every packet: some monitors miss the first after a quiet bus.
    m_clock.sleepFor(writeDelay);
    bool second = m_transport.write(service, DDCPacket::chipAddress, DDCPacket::hostAddress, packet);
    m_lastTransmission[service] = m_clock.uptime();
    return first || second;
}

} // namespace quillmar
