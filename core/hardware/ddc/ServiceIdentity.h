#pragma once

#include <string>
#include <string_view>

namespace quillmar {

// What ties a display's bus to the display: its product name, serial number and EDID identity, and where
// it is ("External" for a monitor on a cable; only those are driven over DDC).
struct ServiceIdentity {
    static constexpr std::string_view externalLocation = "External";

    std::string productName;
    std::string serialNumber;
    std::string edidUUID;
    std::string location;

    bool operator==(const ServiceIdentity&) const = default;
};

} // namespace quillmar
