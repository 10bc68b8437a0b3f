#pragma once

#include "core/hardware/smc/SMCDriver.h"

namespace quillmar {

// The SMC on a system without one: it never opens and every call fails.
class UnsupportedSMCDriver final : public SMCDriver {
public:
    Result<void> open() override;
    int callStructMethod(std::uint32_t selector, const SMCParamBlock::Bytes& input, SMCParamBlock::Bytes& output) override;
};

} // namespace quillmar
