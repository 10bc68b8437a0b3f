#pragma once

#include "core/runtime/Runtime.h"
#include "core/windows/AX.h"
#include "core/windows/RunningApplications.h"
#include "core/windows/WindowActions.h"

namespace quillmar {

// The window operations over the accessibility port: raise and press, and the application activation that
// brings a process to the front (private system functions on macOS, looked up at run time). Main thread.
class AccessibilityWindowActions final : public WindowActions {
public:
    AccessibilityWindowActions(Runtime& runtime, RunningApplications& applications, Accessibility& accessibility);

    bool focus(const WindowEntry& entry) override;
    bool close(const WindowEntry& entry) override;
    void setMinimized(const WindowEntry& entry, bool minimized, std::function<void(bool)> then) override;
    bool activateApp(std::int32_t pid) override;

private:
    std::optional<AXElement> element(const WindowEntry& entry) const;

    Runtime& m_runtime;
    RunningApplications& m_applications;
    AX m_ax;
};

} // namespace quillmar
