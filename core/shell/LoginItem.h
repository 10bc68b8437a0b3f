#pragma once

#include "core/base/Result.h"

namespace quillmar {

// Whether the system starts the application when the user logs in. Main thread only.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    // An Error when the system's record cannot be read.
    virtual Result<bool> launchesAtLogin() const = 0;

    // An Error, with a sentence for the user, when the system's record cannot be changed.
    virtual Result<void> setLaunchesAtLogin(bool on) = 0;
};

} // namespace quillmar
