#pragma once

#include <cstdint>

#include "core/base/Result.h"
#include "core/hardware/smc/SMCParamBlock.h"

namespace quillmar {

// The SMC's driver (the "AppleSMC" user client on macOS). One connection per object; it is used from one
// thread at a time.
class SMCDriver {
public:
    virtual ~SMCDriver() = default;

    // Opens the connection to the first SMC service for this process. An Error when there is none or it
    // refuses; the message is a sentence a user may read.
    virtual Result<void> open() = 0;

    // One structure call: method `selector` with the 80-byte `input`, the driver's 80-byte answer in `output`.
    // Returns the driver's status, 0 when the call went through (the SMC's own result is inside `output`).
    virtual int callStructMethod(std::uint32_t selector, const SMCParamBlock::Bytes& input,
        SMCParamBlock::Bytes& output) = 0;
};

} // namespace quillmar
