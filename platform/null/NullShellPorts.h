#pragma once

#include "core/shell/LoginItem.h"
#include "core/shell/SleepInhibitor.h"

namespace quillmar {

// The ports of the application shell where the system offers nothing: each answers "not here" and changes
// nothing. System factories hand them out for ports without a backend; the command line and the tests use them
// too.

// Idle sleep cannot be held off: every inhibit fails.
class NullSleepInhibitor final : public SleepInhibitor {
public:
    Result<void> inhibit(std::string_view reason) override;
    void release() override;
    bool isInhibiting() const override;
};

// Never launched at login; turning it on fails, turning it off succeeds.
class NullLoginItem final : public LoginItem {
public:
    Result<bool> launchesAtLogin() const override;
    Result<void> setLaunchesAtLogin(bool on) override;
};

} // namespace quillmar
