#pragma once

#include <cstdint>

namespace quillmar {

// What reading a VCP code gave: a value (current and maximum), unsupported (the monitor answered with a
// non-zero result code), or failed (no valid reply).
struct DDCReadOutcome {
    enum class Status { value, unsupported, failed };

    Status status = Status::failed;
    std::uint16_t current = 0;
    std::uint16_t maximum = 0;

    static DDCReadOutcome value(std::uint16_t current, std::uint16_t maximum) { return { Status::value, current, maximum }; }
    static DDCReadOutcome unsupported() { return { Status::unsupported, 0, 0 }; }
    static DDCReadOutcome failed() { return { Status::failed, 0, 0 }; }

    bool operator==(const DDCReadOutcome&) const = default;
};

} // namespace quillmar
