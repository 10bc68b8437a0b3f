#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace quillmar {

// One display output as the kernel's DRM subsystem lists it under /sys/class/drm ("card0-HDMI-A-1").
struct DrmConnector {
    // The folder's name ("card0-HDMI-A-1") and the connector's own part ("HDMI-A-1").
    std::string name;
    std::string connector;
    bool connected = false;
    // The I2C bus of its DDC lines ("i2c-5"), when the kernel names one.
    std::optional<std::string> bus;
    // The monitor's EDID; empty when nothing is connected.
    std::vector<std::uint8_t> edid;

    // Built-in panels (eDP, LVDS, DSI) are not external monitors.
    bool isInternal() const;

    // Every connector under `root`, sorted by name; empty when `root` does not exist.
    static std::vector<DrmConnector> scan(const std::filesystem::path& root);
};

} // namespace quillmar
