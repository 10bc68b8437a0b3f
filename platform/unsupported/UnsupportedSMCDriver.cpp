#include "platform/unsupported/UnsupportedSMCDriver.h"

namespace quillmar {

Result<void> UnsupportedSMCDriver::open()
{
    return Error { "smc.unsupported", "This system has no SMC that Quillmar can read.", {} };
}

int UnsupportedSMCDriver::callStructMethod(std::uint32_t, const SMCParamBlock::Bytes&, SMCParamBlock::Bytes&)
{
    return -1;
}

} // namespace quillmar
