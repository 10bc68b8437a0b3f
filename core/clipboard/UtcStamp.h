#pragma once

#include <string>

#include "core/runtime/Clock.h"

namespace quillmar {

// `time` as a compact UTC stamp, "20261122T101500Z", for the names of files kept aside. Independent of
// the process's time zone.
std::string utcStamp(WallTime time);

} // namespace quillmar
