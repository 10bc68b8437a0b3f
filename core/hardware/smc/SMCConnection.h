#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/base/Result.h"
#include "core/hardware/smc/SMCDriver.h"
#include "core/hardware/smc/SMCKeyInfo.h"

namespace quillmar {

// An open connection to the SMC with a cache of key infos and a set of keys known to be missing.
// Every failure below this class is a none or a false; nothing throws. Used from one thread at a time.
class SMCConnection final {
public:
    // The driver method that takes and returns the parameter block.
    static constexpr std::uint32_t structSelector = 2;

    // Opens `driver`; an Error (a sentence) when the system has no SMC or refuses the connection.
    static Result<std::unique_ptr<SMCConnection>> open(std::unique_ptr<SMCDriver> driver);

    // The key's size and type, from the cache or the SMC. None for a key that is not four characters, that
    // the SMC does not know, or whose size is outside 1...32; such keys are not asked for again.
    std::optional<SMCKeyInfo> info(std::string_view key);

    // The key's first `info.size` data bytes; none when the call or the SMC fails.
    std::optional<std::vector<std::uint8_t>> readBytes(std::string_view key, const SMCKeyInfo& info);

    // Writes exactly `info.size` bytes (zero-padded to the data area); false for another count or a failure.
    bool writeBytes(std::string_view key, const SMCKeyInfo& info, std::span<const std::uint8_t> bytes);

    // The key's value decoded by its type (SMCCodec); none when missing, unreadable or of an unknown type.
    std::optional<double> readValue(std::string_view key);

    // Encodes `value` by the key's type and writes it; false when it cannot be encoded or written.
    bool writeValue(std::string_view key, double value);

    // Every key of the SMC's table (its size read from "#KEY") for which `where` is true, in table order.
    std::vector<std::string> keys(const std::function<bool(std::string_view key)>& where);

private:
    explicit SMCConnection(std::unique_ptr<SMCDriver> driver) : m_driver(std::move(driver)) { }

    // None when the driver call fails; otherwise the answer, whose `result` the caller checks.
    std::optional<SMCParamBlock> call(const SMCParamBlock& input);

    std::unique_ptr<SMCDriver> m_driver;
    std::map<std::string, SMCKeyInfo, std::less<>> m_infos;
    std::set<std::string, std::less<>> m_missing;
};

} // namespace quillmar
