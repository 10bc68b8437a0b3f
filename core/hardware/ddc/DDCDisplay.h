#pragma once

#include <string>

#include "core/hardware/ddc/ServiceIdentity.h"

namespace quillmar {

// The transport's name for one display's DDC bus (the device path on Linux).
using DDCServiceID = std::string;

// An external display reachable over DDC/CI.
struct DDCDisplay {
    DDCServiceID service;
    ServiceIdentity identity;

    bool operator==(const DDCDisplay&) const = default;
};

} // namespace quillmar
