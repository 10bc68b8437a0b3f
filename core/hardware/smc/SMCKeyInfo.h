#pragma once

#include <cstdint>

namespace quillmar {

// What the SMC says about a key: its data size in bytes (1...32) and its type, a four-character code
// ("flt ", "ui8 ", "fpe2"; FourCC::string spells it).
struct SMCKeyInfo {
    std::uint32_t size = 0;
    std::uint32_t type = 0;

    bool operator==(const SMCKeyInfo&) const = default;
};

} // namespace quillmar
