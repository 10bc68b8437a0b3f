#include "core/base/Diagnostics.h"
#include "core/shell/SystemShellPorts.h"
#include "platform/linux/AutostartLoginItem.h"
#include "platform/linux/DBusSleepInhibitor.h"
#include "platform/null/NullShellPorts.h"

namespace quillmar {

SystemShellPorts makeSystemShellPorts()
{
    SystemShellPorts ports;
    ports.sleepInhibitor = std::make_unique<DBusSleepInhibitor>(DBusBuses {});
    if (auto loginItem = AutostartLoginItem::create()) {
        ports.loginItem = std::move(loginItem).value();
    } else {
        diagnostic("login item: none ({})", loginItem.error().context);
        ports.loginItem = std::make_unique<NullLoginItem>();
    }
    return ports;
}

} // namespace quillmar
