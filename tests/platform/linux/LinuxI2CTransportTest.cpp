#include <fstream>

#include <gtest/gtest.h>

#include "platform/linux/LinuxI2CTransport.h"
#include "tests/hardware/EdidTestData.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

namespace fs = std::filesystem;

// A /sys/class/drm and a /dev in a temporary folder.
class LinuxI2CTransportTest : public testing::Test {
protected:
    LinuxI2CTransportTest()
    {
        fs::create_directories(drm());
        fs::create_directories(dev());
    }

    fs::path drm() const { return folder.path() / "sys" / "class" / "drm"; }
    fs::path dev() const { return folder.path() / "dev"; }

    // A connector folder; `bus` is linked as "ddc" or, with `busAsFolder`, held as a sub-folder.
    void addConnector(const std::string& name, const std::string& status, const std::string& bus = {},
        const std::string& monitorName = {}, bool busAsFolder = false)
    {
        auto path = drm() / name;
        fs::create_directories(path);
        std::ofstream(path / "status") << status << '\n';
        if (!monitorName.empty()) {
            auto edid = makeEdid(monitorName, "SN" + monitorName.substr(0, 3));
            std::ofstream(path / "edid", std::ios::binary).write(reinterpret_cast<const char*>(edid.data()),
                static_cast<std::streamsize>(edid.size()));
        }
        if (bus.empty())
            return;
        if (busAsFolder)
            fs::create_directories(path / bus);
        else
            fs::create_symlink(fs::path("..") / ".." / ".." / "devices" / "i2c" / bus, path / "ddc");
    }

    void addDevice(const std::string& bus) { std::ofstream(dev() / bus) << ""; }

    Result<std::vector<DDCDisplay>> displays() { return LinuxI2CTransport({ drm(), dev() }).externalDisplays(); }

    TemporaryFolder folder;
};

TEST_F(LinuxI2CTransportTest, ASystemWithoutDisplayOutputsSaysSo)
{
    fs::remove_all(drm());
    auto found = displays();
    ASSERT_FALSE(found);
    EXPECT_EQ(found.error().message, "No external monitor can be reached over DDC/CI: this system shows no display outputs.");
}

TEST_F(LinuxI2CTransportTest, BuiltInPanelsAndEmptyOutputsAreNoMonitors)
{
    addConnector("card0", "");
    addConnector("card0-eDP-1", "connected", "i2c-1", "Built-in");
    addConnector("card0-HDMI-A-1", "disconnected", "i2c-3");
    addDevice("i2c-1");
    addDevice("i2c-3");
    auto found = displays();
    ASSERT_FALSE(found);
    EXPECT_EQ(found.error().message, "No external monitor is connected.");
}

TEST_F(LinuxI2CTransportTest, ConnectedMonitorsComeWithTheirBusAndIdentityInConnectorOrder)
{
    addConnector("card0-HDMI-A-1", "connected", "i2c-3", "DELL U2720Q");
    addConnector("card0-DP-2", "connected", "i2c-7", "LG HDR 4K", /*busAsFolder=*/true);
    addConnector("card0-DP-1", "disconnected", "i2c-6");
    addDevice("i2c-3");
    addDevice("i2c-7");
    auto found = displays();
    ASSERT_TRUE(found) << found.error().message;
    ASSERT_EQ(found->size(), 2u);
    EXPECT_EQ((*found)[0].service, (dev() / "i2c-7").string());
    EXPECT_EQ((*found)[0].identity.productName, "LG HDR 4K");
    EXPECT_EQ((*found)[1].service, (dev() / "i2c-3").string());
    EXPECT_EQ((*found)[1].identity, (ServiceIdentity { "DELL U2720Q", "SNDEL", "10acb1a0040302010c1e", "External" }));
}

TEST_F(LinuxI2CTransportTest, AMonitorWithoutEdidIsNamedByItsConnector)
{
    addConnector("card1-DVI-D-1", "connected", "i2c-2");
    addDevice("i2c-2");
    auto found = displays();
    ASSERT_TRUE(found);
    EXPECT_EQ(found->front().identity.productName, "DVI-D-1");
}

TEST_F(LinuxI2CTransportTest, AMissingDeviceNodeAsksForTheModule)
{
    addConnector("card0-HDMI-A-1", "connected", "i2c-3", "DELL U2720Q");
    auto found = displays();
    ASSERT_FALSE(found);
    EXPECT_EQ(found.error().code, "ddc.noDevice");
    EXPECT_EQ(found.error().message,
        (dev() / "i2c-3").string() + " isn't there: load the i2c-dev module (\"sudo modprobe i2c-dev\").");
}

TEST_F(LinuxI2CTransportTest, AMonitorWithoutABusSaysSo)
{
    addConnector("card0-HDMI-A-1", "connected", {}, "DELL U2720Q");
    auto found = displays();
    ASSERT_FALSE(found);
    EXPECT_EQ(found.error().message, "The connected monitor has no DDC bus that Quillmar can reach.");
}

TEST_F(LinuxI2CTransportTest, OneReachableMonitorIsEnoughWhenAnotherIsNot)
{
    addConnector("card0-HDMI-A-1", "connected", "i2c-3", "DELL U2720Q");
    addConnector("card0-HDMI-A-2", "connected", "i2c-4", "LG HDR 4K");
    addDevice("i2c-4");
    auto found = displays();
    ASSERT_TRUE(found);
    ASSERT_EQ(found->size(), 1u);
    EXPECT_EQ(found->front().identity.productName, "LG HDR 4K");
}

TEST_F(LinuxI2CTransportTest, BusCallsOnADeviceThatIsNotAnI2CAdapterFail)
{
    addDevice("i2c-3");
    LinuxI2CTransport transport({ drm(), dev() });
    const std::uint8_t packet[] { 0x82, 0x01, 0x10, 0xAC };
    EXPECT_FALSE(transport.write((dev() / "i2c-3").string(), 0x37, 0x51, packet));
    std::uint8_t reply[11] {};
    EXPECT_FALSE(transport.read((dev() / "i2c-3").string(), 0x37, reply));
    EXPECT_FALSE(transport.read((dev() / "i2c-9").string(), 0x37, reply));
}

} // namespace
} // namespace quillmar
