#include "tests/hardware/SimulatedSMC.h"

#include <algorithm>
#include <stdexcept>

#include "core/hardware/fans/FanProbe.h"
#include "core/hardware/smc/FourCC.h"
#include "core/hardware/smc/SMCCodec.h"

namespace quillmar {

SimulatedSMC::SimulatedSMC(const Clock* clock)
    : m_clock(clock)
{
    m_keys["#KEY"] = Key { "ui32", { 0, 0, 0, 0 } };
    updateKeyCount();
}

void SimulatedSMC::setKey(const std::string& key, const std::string& type, std::vector<std::uint8_t> bytes)
{
    m_keys[key] = Key { type, std::move(bytes) };
    updateKeyCount();
}

void SimulatedSMC::setValue(const std::string& key, const std::string& type, std::size_t size, double value)
{
    auto bytes = SMCCodec::encode(value, type, size);
    if (!bytes)
        throw std::logic_error("simulated smc: value does not encode: " + key);
    setKey(key, type, *bytes);
}

void SimulatedSMC::removeKey(const std::string& key)
{
    m_keys.erase(key);
    updateKeyCount();
}

std::optional<double> SimulatedSMC::value(const std::string& key) const
{
    auto found = m_keys.find(key);
    if (found == m_keys.end())
        return std::nullopt;
    return SMCCodec::decode(found->second.bytes, found->second.type);
}

std::optional<std::vector<std::uint8_t>> SimulatedSMC::bytes(const std::string& key) const
{
    auto found = m_keys.find(key);
    if (found == m_keys.end())
        return std::nullopt;
    return found->second.bytes;
}

Result<void> SimulatedSMC::open()
{
    if (failOpen)
        return Error { "smc.unavailable", "The SMC can't be opened.", {} };
    return {};
}

int SimulatedSMC::callStructMethod(std::uint32_t selector, const SMCParamBlock::Bytes& input, SMCParamBlock::Bytes& output)
{
    selectors.push_back(selector);
    auto request = SMCParamBlock::decode(input);
    requests.push_back(request);
    if (driverStatus != 0)
        return driverStatus;

    SMCParamBlock answer;
    answer.key = request.key;
    answer.command = request.command;
    auto name = FourCC::string(request.key);
    auto found = m_keys.find(name);
    switch (request.command) {
    case SMCParamBlock::getKeyInfo:
        if (found == m_keys.end()) {
            answer.result = keyNotFound;
            break;
        }
        answer.dataSize = static_cast<std::uint32_t>(found->second.bytes.size());
        answer.dataType = FourCC::code(found->second.type).value_or(0);
        break;
    case SMCParamBlock::readKey:
        if (found == m_keys.end()) {
            answer.result = keyNotFound;
            break;
        }
        std::copy_n(found->second.bytes.begin(), std::min<std::size_t>(found->second.bytes.size(), 32), answer.bytes.begin());
        break;
    case SMCParamBlock::writeKey: {
        if (found == m_keys.end() || request.dataSize != found->second.bytes.size()) {
            answer.result = keyNotFound;
            break;
        }
        std::vector<std::uint8_t> written(request.bytes.begin(), request.bytes.begin() + request.dataSize);
        auto stored = m_rule ? m_rule(name, written) : std::optional(written);
        writes.push_back(Write { name, written, now(), stored.has_value() });
        if (!stored) {
            answer.result = refused;
            break;
        }
        found->second.bytes = *stored;
        break;
    }
    case SMCParamBlock::readKeyAtIndex: {
        if (request.data32 >= m_keys.size()) {
            answer.result = keyNotFound;
            break;
        }
        auto at = std::next(m_keys.begin(), static_cast<std::ptrdiff_t>(request.data32));
        answer.key = FourCC::code(at->first).value_or(0);
        break;
    }
    default:
        answer.result = refused;
    }
    output = answer.encode();
    return 0;
}

int SimulatedSMC::commandCount(std::uint8_t command) const
{
    return static_cast<int>(std::count_if(requests.begin(), requests.end(),
        [&](const SMCParamBlock& request) { return request.command == command; }));
}

std::vector<SimulatedSMC::Write> SimulatedSMC::writesOf(const std::string& key) const
{
    std::vector<Write> found;
    for (const auto& write : writes) {
        if (write.key == key && write.accepted)
            found.push_back(write);
    }
    return found;
}

Duration SimulatedSMC::now() const
{
    return m_clock ? m_clock->uptime() : Duration::zero();
}

void SimulatedSMC::updateKeyCount()
{
    // "#KEY" counts itself, as on a real SMC; once removed it stays away.
    if (!m_keys.contains("#KEY"))
        return;
    auto count = static_cast<std::uint32_t>(m_keys.size());
    m_keys["#KEY"] = Key { "ui32", { static_cast<std::uint8_t>(count >> 24), static_cast<std::uint8_t>(count >> 16),
                                       static_cast<std::uint8_t>(count >> 8), static_cast<std::uint8_t>(count) } };
}

void addFan(SimulatedSMC& smc, int index, double minimum, double maximum, const std::string& modeSuffix)
{
    smc.setValue(FanProbe::key(index, "Mn"), "flt ", 4, minimum);
    smc.setValue(FanProbe::key(index, "Mx"), "flt ", 4, maximum);
    smc.setValue(FanProbe::key(index, "Ac"), "flt ", 4, minimum);
    smc.setValue(FanProbe::key(index, "Tg"), "flt ", 4, minimum);
    smc.setKey(FanProbe::key(index, modeSuffix), "ui8 ", { 0 });
}

void setFanCount(SimulatedSMC& smc, double count)
{
    smc.setValue("FNum", "ui8 ", 1, count);
}

void addForceTest(SimulatedSMC& smc)
{
    smc.setKey("Ftst", "ui8 ", { 0 });
}

} // namespace quillmar
