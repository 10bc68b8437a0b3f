#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "core/hardware/ddc/DDCPacket.h"

// A monitor's reply comes off the bus as any bytes: the first byte here is the code asked for, the rest the
// reply. Parsing must never read past the bytes, and a value must come with a maximum.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    std::span<const std::uint8_t> reply(data + 1, size - 1);
    auto outcome = quillmar::DDCPacket::parse(reply, data[0]);
    if (outcome.status == quillmar::DDCReadOutcome::Status::value && outcome.maximum == 0)
        std::abort();
    return 0;
}
