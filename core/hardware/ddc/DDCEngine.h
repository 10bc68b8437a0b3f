#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <span>
#include <string_view>
#include <vector>

#include "core/base/Result.h"
#include "core/hardware/ddc/DDCPacket.h"
#include "core/hardware/ddc/DDCReadOutcome.h"
#include "core/hardware/ddc/I2CTransport.h"
#include "core/hardware/ddc/VCPCode.h"
#include "core/runtime/Runtime.h"

namespace quillmar {

// Talks DDC/CI to external monitors. All bus traffic runs on the engine's own serial queue, where the
// pacing sleeps (on the runtime's clock): a monitor's bus needs 50 ms between transmissions, 10 ms before
// each write, and each packet goes out twice because some monitors drop the first one. Writes are
// coalesced per display and code, so a dragged slider sends only its latest value. Completions run on the
// engine's queue. Thread-safe.
class DDCEngine final {
public:
    using ReadOutcome = DDCReadOutcome;
    using Completion = std::function<void(bool succeeded)>;

    struct PendingWrite {
        DDCServiceID service;
        std::uint8_t code = 0;
        std::uint16_t value = 0;
        Completion completion;
    };

    static constexpr std::string_view queueLabel = "com.quillmar.displays.ddc";
    static constexpr Duration transmissionSpacing = seconds(0.05);
    static constexpr Duration writeDelay = seconds(0.01);
    static constexpr Duration replyDelay = seconds(0.05);
    static constexpr Duration readRetryDelay = seconds(0.02);
    // A get request and its reply, this many times at most; each try holds the bus for about 130 ms.
    static constexpr int readAttempts = 3;

    DDCEngine(Runtime& runtime, I2CTransport& transport);
    ~DDCEngine();

    DDCEngine(const DDCEngine&) = delete;
    DDCEngine& operator=(const DDCEngine&) = delete;

    // The external displays and their buses.
    Result<std::vector<DDCDisplay>> discover();

    // Queues `value` for `code` on `service`. A write of the same display and code that is still queued takes
    // the new value in place (both completions get the outcome of the one packet sent).
    void write(std::uint8_t code, std::uint16_t value, const DDCServiceID& service, Completion completion = {});

    // Reads `code` on the engine's queue and calls `completion` there.
    void read(const DDCServiceID& service, std::function<void(ReadOutcome)> completion,
        std::uint8_t code = VCPCode::brightness);

    // The writes still queued, for tests and diagnostics.
    std::size_t pendingCount() const;

private:
    void drain();
    ReadOutcome readNow(std::uint8_t code, const DDCServiceID& service);
    bool transmit(std::span<const std::uint8_t> packet, const DDCServiceID& service);

    Clock& m_clock;
    I2CTransport& m_transport;
    mutable std::mutex m_mutex;
    std::vector<PendingWrite> m_pending;
    bool m_draining = false;
    // Uptime of each display's last transmission; touched only on the queue.
    std::map<DDCServiceID, Duration> m_lastTransmission;
    // Last, so that it goes first: its work still running needs everything above.
    std::unique_ptr<SerialQueue> m_queue;
};

} // namespace quillmar
