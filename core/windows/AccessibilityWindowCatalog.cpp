#include "core/windows/AccessibilityWindowCatalog.h"

#include <cmath>
#include <map>
#include <optional>
#include <set>

#include "core/windows/WindowServer.h"

namespace quillmar {

namespace {

struct AXWindow {
    AXElement element;
    std::optional<std::uint32_t> number;
    std::optional<Rect> frame;
    bool used = false;
};

bool sameFrame(const Rect& a, const Rect& b)
{
    return std::abs(a.x - b.x) + std::abs(a.y - b.y) + std::abs(a.width - b.width) + std::abs(a.height - b.height)
        <= AX::frameHintTolerance;
}

} // namespace

AccessibilityWindowCatalog::AccessibilityWindowCatalog(RunningApplications& applications, WindowList& windows,
    Accessibility& accessibility)
    : m_applications(applications)
    , m_windows(windows)
    , m_ax(accessibility)
{
}

std::vector<AppSnapshot> AccessibilityWindowCatalog::runningApps() const
{
    return m_applications.applications();
}

std::vector<AXElement> AccessibilityWindowCatalog::standardWindows(std::int32_t pid) const
{
    std::vector<AXElement> standard;
    auto app = m_ax.application(pid);
    if (app.isNull())
        return standard;
    for (auto window : m_ax.elements(app, AXName::windows).value_or(std::vector<AXElement> {})) {
        m_ax.port().setMessagingTimeout(window, AX::messagingTimeout);
        if (m_ax.string(window, AXName::subrole) == AXName::standardWindowSubrole)
            standard.push_back(window);
    }
    return standard;
}

std::vector<WindowEntry> AccessibilityWindowCatalog::windows(const std::vector<AppSnapshot>& apps,
    WindowCatalogOptions options) const
{
    std::map<std::int32_t, const AppSnapshot*> byPid;
    for (const auto& app : apps)
        byPid[app.pid] = &app;

    std::set<std::uint32_t> onScreen;
    for (const auto& info : m_windows.list(WindowListScope::onScreenOnly))
        onScreen.insert(info.number);

    bool numbers = m_ax.port().canReadWindowNumbers();
    std::map<std::int32_t, std::vector<AXWindow>> axWindows;
    auto windowsOf = [&](std::int32_t pid) -> std::vector<AXWindow>& {
        auto found = axWindows.find(pid);
        if (found != axWindows.end())
            return found->second;
        auto& list = axWindows[pid];
        for (auto element : standardWindows(pid)) {
            list.push_back({ element, numbers ? m_ax.port().windowNumber(element) : std::nullopt,
                numbers ? std::nullopt : m_ax.frame(element) });
        }
        return list;
    };

    std::vector<WindowEntry> entries;
    for (const auto& info : m_windows.list(WindowListScope::all)) {
        auto app = byPid.find(info.ownerPid);
        if (app == byPid.end() || info.layer != 0)
            continue;
        auto& candidates = windowsOf(info.ownerPid);
        AXWindow* match = nullptr;
        for (auto& candidate : candidates) {
            bool same = numbers ? candidate.number == info.number
                                : (!candidate.used && candidate.frame && sameFrame(*candidate.frame, info.bounds));
            if (same) {
                match = &candidate;
                break;
            }
        }

        WindowEntry entry;
        entry.windowNumber = info.number;
        entry.pid = info.ownerPid;
        entry.appName = app->second->name.empty() ? info.ownerName : app->second->name;
        entry.frame = info.bounds;
        if (match) {
            match->used = true;
            entry.title = m_ax.string(match->element, AXName::title).value_or(info.title);
            entry.isMinimized = m_ax.boolean(match->element, AXName::minimized).value_or(false);
            // A minimised window is off screen but still belongs to the Space it was minimised on.
            entry.isOnCurrentSpace = true;
        } else {
            // Invisible to the accessibility layer: a window of another Space, if it looks like an ordinary one.
            bool ordinary = !onScreen.contains(info.number) && !info.title.empty()
                && info.bounds.width >= WindowServer::minimumWindowSide
                && info.bounds.height >= WindowServer::minimumWindowSide;
            if (!ordinary)
                continue;
            entry.title = info.title;
            entry.isOnCurrentSpace = false;
        }
        if (entry.isMinimized && !options.includeMinimized)
            continue;
        if (!entry.isOnCurrentSpace && !options.includeOtherSpaces)
            continue;
        entries.push_back(std::move(entry));
    }
    return entries;
}

} // namespace quillmar
