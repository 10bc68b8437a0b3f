#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/hardware/fans/FanReading.h"
#include "core/hardware/smc/SMCConnection.h"

namespace quillmar {

// Reads the fans' keys: "FNum" for the count and, per fan, "F" + decimal index + a suffix.
class FanProbe final {
public:
    static constexpr int maximumFanCount = 8;

    explicit FanProbe(SMCConnection& smc) : m_smc(smc) { }

    // "FNum" when it decodes to a whole number 1...8; none otherwise (no fans to speak of).
    std::optional<int> fanCount();

    // The speeds of fans 0 ..< count ("Ac" actual, "Mn" minimum, "Mx" maximum, "Tg" target).
    std::vector<FanReading> read(int count);

    // The fan's mode key: the one with suffix "Md" when the SMC has it, else the one with "md"; none
    // when neither exists.
    std::optional<std::string> modeKey(int fan);

    // "F" + the fan's decimal index + `suffix` ("F0Ac").
    static std::string key(int fan, std::string_view suffix);

private:
    SMCConnection& m_smc;
};

} // namespace quillmar
