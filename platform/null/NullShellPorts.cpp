#include "platform/null/NullShellPorts.h"

namespace quillmar {

Result<void> NullSleepInhibitor::inhibit(std::string_view)
{
    return Error { "keepAwake.unavailable", "This system can't be kept awake.", {} };
}

void NullSleepInhibitor::release() { }

bool NullSleepInhibitor::isInhibiting() const
{
    return false;
}

Result<bool> NullLoginItem::launchesAtLogin() const
{
    return false;
}

Result<void> NullLoginItem::setLaunchesAtLogin(bool on)
{
    if (!on)
        return {};
    return Error { "loginItem.unavailable", "Opening at login isn't available on this system.", {} };
}

} // namespace quillmar
