#pragma once

#include "core/hardware/ddc/I2CTransport.h"
#include "core/hardware/fans/TemperatureSensors.h"
#include "core/hardware/helper/FanHelperClient.h"
#include "core/hardware/helper/FanHelperFiles.h"
#include "core/hardware/helper/FanHelperTransport.h"
#include "core/hardware/smc/SMCDriver.h"

namespace quillmar {

// The ports of the fans and external displays where the system offers nothing: each answers "not here" and
// changes nothing. System factories hand them out for ports without a backend; the command line and the tests
// use them too.

// The SMC on a system without one: it never opens and every call fails.
class NullSMCDriver final : public SMCDriver {
public:
    Result<void> open() override;
    int callStructMethod(std::uint32_t selector, const SMCParamBlock::Bytes& input, SMCParamBlock::Bytes& output) override;
};

// Temperature sensors on a system where Quillmar cannot read them: there are none.
class NullTemperatureSensors final : public TemperatureSensors {
public:
    std::vector<TemperatureReading> read() override;
};

// The fan helper's files on a system where the helper cannot run: nothing opens, nothing exists.
class NullFanHelperFiles final : public FanHelperFiles {
public:
    Result<std::unique_ptr<FanHelperLockFile>> openLockFile(const std::filesystem::path& path, std::uint32_t mode) override;
    bool exists(const std::filesystem::path& path) override;
    Result<void> writeMarker(const std::filesystem::path& path) override;
    Result<void> removeMarker(const std::filesystem::path& path) override;
};

// The helper's listener on a system without one: it never listens.
class NullFanHelperTransport final : public FanHelperTransport {
public:
    Result<void> listen(const std::string& codeRequirement, Handlers handlers) override;
    void stop() override;
};

// The app's way to a fan helper on a system that has none: it cannot be installed and never answers.
class NullFanHelperClient final : public FanHelperClient {
public:
    std::string bundledVersion() const override;
    Result<void> registerHelper() override;
    void send(const FanHelperRequest& request, FanReplyOnce reply) override;
};

// Display buses on a system where Quillmar cannot reach them: no displays, and every bus call fails.
class NullI2CTransport final : public I2CTransport {
public:
    Result<std::vector<DDCDisplay>> externalDisplays() override;
    bool write(const DDCServiceID& service, std::uint8_t chipAddress, std::uint8_t dataAddress,
        std::span<const std::uint8_t> bytes) override;
    bool read(const DDCServiceID& service, std::uint8_t chipAddress, std::span<std::uint8_t> buffer) override;
};

} // namespace quillmar
