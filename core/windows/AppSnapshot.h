#pragma once

#include <cstdint>
#include <string>

namespace quillmar {

// One running application with regular windows, as the window catalogue reports it.
struct AppSnapshot {
    std::int32_t pid = 0;
    std::string name;
    std::string bundleID;
    bool isHidden = false;
    bool isActive = false; // the frontmost application

    friend bool operator==(const AppSnapshot&, const AppSnapshot&) = default;
};

} // namespace quillmar
