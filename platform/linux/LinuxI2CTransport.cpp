#include "platform/linux/LinuxI2CTransport.h"

#include <optional>

#include "core/base/Diagnostics.h"
#include "core/hardware/ddc/Edid.h"
#include "platform/linux/DrmConnector.h"
#include "platform/linux/LinuxI2CDevice.h"

namespace quillmar {

namespace {

ServiceIdentity identityOf(const DrmConnector& connector)
{
    ServiceIdentity identity;
    identity.location = std::string(ServiceIdentity::externalLocation);
    if (auto edid = Edid::parse(connector.edid)) {
        identity.productName = edid->displayName();
        identity.serialNumber = edid->serialNumber();
        identity.edidUUID = edid->identity;
    } else {
        identity.productName = connector.connector;
    }
    return identity;
}

} // namespace

LinuxI2CTransport::LinuxI2CTransport()
    : m_roots(Roots {})
{
}

Result<std::vector<DDCDisplay>> LinuxI2CTransport::externalDisplays()
{
    auto connectors = DrmConnector::scan(m_roots.drm);
    if (connectors.empty()) {
        return Error { "ddc.noOutputs",
            "No external monitor can be reached over DDC/CI: this system shows no display outputs.",
            m_roots.drm.string() };
    }

    std::vector<DDCDisplay> displays;
    std::optional<Error> firstProblem;
    bool anyConnected = false;
    for (const auto& connector : connectors) {
        if (!connector.connected || connector.isInternal())
            continue;
        anyConnected = true;
        if (!connector.bus) {
            diagnostic("ddc: {} has no i2c bus", connector.name);
            if (!firstProblem) {
                firstProblem = Error { "ddc.noBus",
                    "The connected monitor has no DDC bus that Quillmar can reach.", connector.name };
            }
            continue;
        }
        auto path = m_roots.dev / *connector.bus;
        auto device = LinuxI2CDevice::open(path);
        if (!device) {
            diagnostic("ddc: {} on {}: {}", connector.name, path.string(), device.error().code);
            if (!firstProblem)
                firstProblem = std::move(device).error();
            continue;
        }
        displays.push_back(DDCDisplay { path.string(), identityOf(connector) });
    }
    if (!displays.empty())
        return displays;
    if (!anyConnected)
        return Error { "ddc.noMonitor", "No external monitor is connected.", m_roots.drm.string() };
    return *firstProblem;
}

bool LinuxI2CTransport::write(const DDCServiceID& service, std::uint8_t chipAddress, std::uint8_t dataAddress,
    std::span<const std::uint8_t> bytes)
{
    auto device = LinuxI2CDevice::open(service);
    return device && device->write(chipAddress, dataAddress, bytes);
}

bool LinuxI2CTransport::read(const DDCServiceID& service, std::uint8_t chipAddress, std::span<std::uint8_t> buffer)
{
    auto device = LinuxI2CDevice::open(service);
    return device && device->read(chipAddress, buffer);
}

} // namespace quillmar
