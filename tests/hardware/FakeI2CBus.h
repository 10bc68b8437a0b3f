#pragma once

#include <deque>
#include <functional>
#include <map>
#include <vector>

#include "core/hardware/ddc/I2CTransport.h"
#include "core/runtime/Clock.h"

namespace quillmar {

// Display buses in memory, on the test's clock: every write is kept with its time, and reads answer from a
// queue of replies per display (an empty queue answers nothing: the read fails).
class FakeI2CBus final : public I2CTransport {
public:
    struct Write {
        DDCServiceID service;
        std::uint8_t chipAddress;
        std::uint8_t dataAddress;
        std::vector<std::uint8_t> bytes;
        Duration at;
    };
    struct Read {
        DDCServiceID service;
        std::uint8_t chipAddress;
        Duration at;
    };

    explicit FakeI2CBus(const Clock& clock) : m_clock(clock) { }

    Result<std::vector<DDCDisplay>> externalDisplays() override { return displays; }
    bool write(const DDCServiceID& service, std::uint8_t chipAddress, std::uint8_t dataAddress,
        std::span<const std::uint8_t> bytes) override;
    bool read(const DDCServiceID& service, std::uint8_t chipAddress, std::span<std::uint8_t> buffer) override;

    // The reply a monitor gives to a get request: value or unsupported, with a correct checksum.
    static std::vector<std::uint8_t> reply(std::uint8_t code, std::uint16_t current, std::uint16_t maximum,
        std::uint8_t result = 0);

    std::vector<DDCDisplay> displays;
    std::vector<Write> writes;
    std::vector<Read> reads;
    std::map<DDCServiceID, std::deque<std::vector<std::uint8_t>>> replies;
    // Decides whether a write succeeds; every write does by default.
    std::function<bool(const Write&)> acceptWrite;

private:
    const Clock& m_clock;
};

} // namespace quillmar
