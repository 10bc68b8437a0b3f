#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/hardware/smc/SMCDriver.h"
#include "core/runtime/Clock.h"

namespace quillmar {

// An SMC in memory that speaks the 80-byte block protocol: keys with a type and bytes, "#KEY" kept up to
// date, and rules that decide what a write does, so that tests can model fans that take a setting, refuse it
// for a while, or drift from it.
class SimulatedSMC final : public SMCDriver {
public:
    // The SMC's answer to a refused call (kSMCKeyNotFound, and a generic error for writes).
    static constexpr std::uint8_t keyNotFound = 0x84;
    static constexpr std::uint8_t refused = 0x86;

    // What a write stores: the bytes to keep, or none to refuse it.
    using WriteRule = std::function<std::optional<std::vector<std::uint8_t>>(const std::string& key,
        const std::vector<std::uint8_t>& bytes)>;

    struct Write {
        std::string key;
        std::vector<std::uint8_t> bytes;
        Duration at;
        bool accepted;
    };

    explicit SimulatedSMC(const Clock* clock = nullptr);

    void setKey(const std::string& key, const std::string& type, std::vector<std::uint8_t> bytes);
    // Encodes `value` with the codec; the type must be one the codec writes.
    void setValue(const std::string& key, const std::string& type, std::size_t size, double value);
    void removeKey(const std::string& key);
    std::optional<double> value(const std::string& key) const;
    std::optional<std::vector<std::uint8_t>> bytes(const std::string& key) const;

    // Replaces the rule; the default stores every write.
    void setWriteRule(WriteRule rule) { m_rule = std::move(rule); }

    Result<void> open() override;
    int callStructMethod(std::uint32_t selector, const SMCParamBlock::Bytes& input, SMCParamBlock::Bytes& output) override;

    // Test controls and records.
    bool failOpen = false;
    int driverStatus = 0;
    std::vector<std::uint32_t> selectors;
    std::vector<SMCParamBlock> requests;
    std::vector<Write> writes;
    int commandCount(std::uint8_t command) const;
    // Accepted writes of `key`, in order.
    std::vector<Write> writesOf(const std::string& key) const;
    Duration now() const;

private:
    struct Key {
        std::string type;
        std::vector<std::uint8_t> bytes;
    };
    void updateKeyCount();

    const Clock* m_clock;
    std::map<std::string, Key> m_keys;
    WriteRule m_rule;
};

// Fan scenarios on a simulated SMC: a fan's limits, mode key and target key as a Mac with Apple silicon
// has them ("flt " speeds, a "ui8 " mode key, "Ftst" as "ui8 ").
void addFan(SimulatedSMC& smc, int index, double minimum, double maximum, const std::string& modeSuffix = "Md");
void setFanCount(SimulatedSMC& smc, double count);
void addForceTest(SimulatedSMC& smc);

} // namespace quillmar
