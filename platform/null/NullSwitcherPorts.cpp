#include "platform/null/NullSwitcherPorts.h"

namespace quillmar {

void NullAppRecency::claim(std::string_view, WarmPreviews) { }

void NullAppRecency::release(std::string_view) { }

std::vector<std::int32_t> NullAppRecency::recentPIDs() const
{
    return {};
}

bool NullAppTerminator::terminate(std::int32_t)
{
    return false;
}

bool NullAppTerminator::isRunning(std::int32_t) const
{
    return true;
}

bool NullClickMonitor::start(std::function<void()>)
{
    return false;
}

void NullClickMonitor::stop() { }

std::optional<Rect> NullSwitcherPanel::screenFrame()
{
    return std::nullopt;
}

void NullSwitcherPanel::show(SwitcherModel&) { }

void NullSwitcherPanel::hide() { }

std::optional<SymbolicHotKeys::Value> NullSymbolicHotKeys::value(int)
{
    return std::nullopt;
}

bool NullSymbolicHotKeys::setEnabled(int, bool)
{
    return false;
}

} // namespace quillmar
