#include "core/windows/AccessibilityWindowActions.h"

namespace quillmar {

AccessibilityWindowActions::AccessibilityWindowActions(Runtime& runtime, RunningApplications& applications,
    Accessibility& accessibility)
    : m_runtime(runtime)
    , m_applications(applications)
    , m_ax(accessibility)
{
}

std::optional<AXElement> AccessibilityWindowActions::element(const WindowEntry& entry) const
{
    if (!m_ax.port().isTrusted())
        return std::nullopt;
    return m_ax.window(entry.pid, entry.windowNumber, entry.frame);
}

bool AccessibilityWindowActions::focus(const WindowEntry& entry)
{
    auto window = element(entry);
    if (!window)
        return false;
    // A minimised window is brought back first: raising alone leaves it in the Dock.
    if (m_ax.boolean(*window, AXName::minimized) == true)
        m_ax.port().setAttribute(*window, AXName::minimized, false);
    m_ax.port().setAttribute(*window, AXName::main, true);
    bool raised = m_ax.port().performAction(*window, AXName::raiseAction);
    bool activated = m_applications.activate(entry.pid, entry.windowNumber);
    return raised && activated;
}

bool AccessibilityWindowActions::close(const WindowEntry& entry)
{
    auto window = element(entry);
    if (!window)
        return false;
    auto button = m_ax.element(*window, AXName::closeButton);
    return button && m_ax.port().performAction(*button, AXName::pressAction);
}

void AccessibilityWindowActions::setMinimized(const WindowEntry& entry, bool minimized, std::function<void(bool)> then)
{
    auto window = element(entry);
    bool done = window && m_ax.port().setAttribute(*window, AXName::minimized, minimized);
    m_runtime.mainQueue().post([then = std::move(then), done] {
        if (then)
            then(done);
    });
}

bool AccessibilityWindowActions::activateApp(std::int32_t pid)
{
    return m_applications.activate(pid, std::nullopt);
}

} // namespace quillmar
