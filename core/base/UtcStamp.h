#pragma once

#include <chrono>
#include <string>

namespace quillmar {

// `time` as a compact UTC stamp, "20261122T101500Z", for the names of files kept aside. Independent of
// the process's time zone. Every file kept aside is named with it, so that the names sort by time.
std::string utcStamp(std::chrono::system_clock::time_point time);

} // namespace quillmar
