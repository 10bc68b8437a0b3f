#include "core/switcher/SystemSwitcherPorts.h"
#include "platform/null/NullSwitcherPorts.h"

namespace quillmar {

SystemSwitcherPorts makeSystemSwitcherPorts()
{
    SystemSwitcherPorts ports;
    ports.recency = std::make_unique<NullAppRecency>();
    ports.terminator = std::make_unique<NullAppTerminator>();
    ports.panel = std::make_unique<NullSwitcherPanel>();
    ports.clicks = std::make_unique<NullClickMonitor>();
    ports.symbolicHotKeys = std::make_unique<NullSymbolicHotKeys>();
    return ports;
}

} // namespace quillmar
