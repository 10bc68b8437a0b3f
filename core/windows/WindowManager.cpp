#include "core/windows/WindowManager.h"

#include <algorithm>
#include <cmath>

namespace quillmar {

namespace {

constexpr const char* displaySymbol = "display";

bool within(double a, double b, double tolerance)
{
    return std::abs(a - b) <= tolerance;
}

} // namespace

WindowManager::WindowManager(Runtime& runtime, Ports ports, const WindowsPreferences& preferences)
    : m_runtime(runtime)
    , m_ports(ports)
    , m_ax(ports.accessibility)
    , m_preferences(preferences)
{
}

WindowManager::~WindowManager() = default;

Rect WindowManager::toAppKit(const Rect& frame) const
{
    return frame.flipped(m_ports.screens.mainDisplayHeight());
}

std::optional<Rect> WindowManager::frame(AXElement window) const
{
    return m_ax.frame(window);
}

std::optional<ScreenInfo> WindowManager::screen(const Rect& frame) const
{
    auto screens = m_ports.screens.screens();
    if (screens.empty())
        return std::nullopt;
    Rect flipped = toAppKit(frame);
    const ScreenInfo* best = &screens.front();
    double bestArea = 0;
    for (const auto& candidate : screens) {
        double area = candidate.frame.intersection(flipped).area();
        if (area > bestArea) {
            best = &candidate;
            bestArea = area;
        }
    }
    return *best;
}

bool WindowManager::isUsable(AXElement window) const
{
    // A role that cannot be read passes: some applications answer nothing for it while their windows move fine.
    if (auto role = m_ax.string(window, AXName::role); role && *role != AXName::windowRole)
        return false;
    if (m_ax.string(window, AXName::subrole) == AXName::floatingWindowSubrole)
        return false;
    if (m_ax.boolean(window, AXName::minimized) == true || m_ax.boolean(window, AXName::fullScreen) == true)
        return false;
    if (m_ports.accessibility.isAttributeSettable(window, AXName::position) == false)
        return false;
    auto current = frame(window);
    return !current || (current->width >= 80 && current->height >= 80);
}

std::optional<AXElement> WindowManager::focusedWindow()
{
    auto pid = m_ports.applications.frontmostProcess();
    if (!pid)
        return std::nullopt;
    auto app = m_ax.application(*pid);
    if (app.isNull())
        return std::nullopt;
    for (const char* name : { AXName::focusedWindow, AXName::mainWindow }) {
        if (auto window = m_ax.element(app, name); window && isUsable(*window))
            return window;
    }
    if (auto windows = m_ax.elements(app, AXName::windows)) {
        for (auto window : *windows) {
            if (isUsable(window))
                return window;
        }
    }
    return std::nullopt;
}

void WindowManager::writeFrame(AXElement window, const Rect& target)
{
    auto& ax = m_ports.accessibility;
    // Size, position, size, position: an application clamps a move that would push the old size off the
    // screen, and a resize that would cross the screen's edge at the old position; the second pair lands
    // whatever the first one was cut to.
    for (int pass = 0; pass < 2; ++pass) {
        ax.setAttribute(window, AXName::size, Size { target.width, target.height });
        ax.setAttribute(window, AXName::position, Point { target.x, target.y });
    }
}

void WindowManager::set(AXElement window, const Rect& target)
{
    auto& ax = m_ports.accessibility;
    std::optional<AXElement> app;
    if (auto pid = ax.processID(window))
        app = m_ax.application(*pid);
    // The enhanced interface makes applications animate, and fight, programmatic moves.
    bool switchedOff = app && m_ax.boolean(*app, AXName::enhancedInterface) == true
        && ax.setAttribute(*app, AXName::enhancedInterface, false);

    writeFrame(window, target);

    if (switchedOff)
        ax.setAttribute(*app, AXName::enhancedInterface, true);

    m_guard.postAfter(m_runtime.mainQueue(), readBackDelay, [this, window, target] {
        auto landed = frame(window);
        if (!landed)
            return;
        // The top edge is compared: maxY in the bottom-left space.
        double miss = std::abs(landed->minX() - target.minX()) + std::abs(landed->minY() - target.minY())
            + std::abs(landed->width - target.width) + std::abs(landed->height - target.height);
        if (miss <= readBackTolerance)
            return;
        auto& port = m_ports.accessibility;
        port.setAttribute(window, AXName::position, Point { target.x, target.y });
        port.setAttribute(window, AXName::size, Size { target.width, target.height });
    });
}

void WindowManager::feedback(std::string_view title, std::string_view symbolName)
{
    if (m_preferences.haptics())
        m_ports.haptics.performAlignment();
    m_ports.hud.show(title, symbolName);
}

void WindowManager::remember(AXElement window, const Rect& frame)
{
    if (historyEntry(window))
        return;
    if (m_history.size() >= historyLimit)
        m_history.pop_front();
    m_history.push_back({ window, frame });
}

std::optional<WindowManager::HistoryEntry> WindowManager::historyEntry(AXElement window) const
{
    for (auto entry = m_history.rbegin(); entry != m_history.rend(); ++entry) {
        if (entry->window == window)
            return *entry;
    }
    return std::nullopt;
}

std::optional<WindowManager::FocusedPlacement> WindowManager::focusedPlacement()
{
    if (!m_ports.accessibility.isTrusted())
        return std::nullopt;
    auto window = focusedWindow();
    if (!window)
        return std::nullopt;
    auto current = frame(*window);
    if (!current)
        return std::nullopt;
    auto onScreen = screen(*current);
    if (!onScreen)
        return std::nullopt;
    return FocusedPlacement { *window, *current, *onScreen };
}

void WindowManager::apply(Layout layout)
{
    if (auto focused = focusedPlacement())
        apply(layout, focused->window, focused->screen, Feedback::on);
}

void WindowManager::apply(Layout layout, AXElement window, const ScreenInfo& onScreen, Feedback wanted)
{
    if (!m_ports.accessibility.isTrusted())
        return;
    auto current = frame(window);
    if (!current)
        return;
    Rect target = layoutFrame(layout, onScreen.visibleFrame, toAppKit(*current), m_preferences.windowGap());
    if (target.isEmpty())
        return;
    remember(window, *current);
    set(window, toAppKit(target));
    if (wanted == Feedback::on)
        feedback(title(shortcutAction(layout)), symbol(layout));
}

void WindowManager::toggleMaximize(bool restoreWhenMaximized)
{
    auto focused = focusedPlacement();
    if (!focused)
        return;
    auto window = focused->window;
    Rect present = toAppKit(focused->frame);
    Rect maximized = layoutFrame(Layout::maximize, focused->screen.visibleFrame, present, m_preferences.windowGap());
    if (maximized.isEmpty())
        return;

    bool isMaximized = within(present.minX(), maximized.minX(), maximizedTolerance)
        && within(present.minY(), maximized.minY(), maximizedTolerance)
        && within(present.width, maximized.width, maximizedTolerance)
        && within(present.height, maximized.height, maximizedTolerance);
    if (!isMaximized) {
        remember(window, focused->frame);
        set(window, toAppKit(maximized));
        feedback(title(ShortcutAction::maximize), symbol(Layout::maximize));
        return;
    }
    if (!restoreWhenMaximized)
        return;
    if (auto entry = historyEntry(window); entry && entry->frame.width > 80 && entry->frame.height > 80) {
        set(window, entry->frame);
        feedback(restoredTitle, restoredSymbol);
        return;
    }
    // Nothing sensible to go back to: a centred frame that is clearly not maximised.
    double w = std::round(maximized.width * 0.72);
    double h = std::round(maximized.height * 0.78);
    Rect centred { maximized.midX() - w / 2, maximized.midY() - h / 2, w, h };
    set(window, toAppKit(centred));
    feedback(title(ShortcutAction::center), symbol(Layout::center));
}

void WindowManager::moveToDisplay(DisplayDirection direction)
{
    auto focused = focusedPlacement();
    if (!focused)
        return;
    auto screens = m_ports.screens.screens();
    if (screens.size() < 2)
        return;
    const auto* from = &focused->screen;

    std::stable_sort(screens.begin(), screens.end(), [](const ScreenInfo& a, const ScreenInfo& b) {
        if (a.frame.minX() != b.frame.minX())
            return a.frame.minX() < b.frame.minX();
        return a.frame.maxY() > b.frame.maxY();
    });
    auto index = static_cast<std::size_t>(std::find(screens.begin(), screens.end(), *from) - screens.begin());
    std::size_t count = screens.size();
    const auto& to = screens[direction == DisplayDirection::next ? (index + 1) % count : (index + count - 1) % count];

    const Rect& source = from->visibleFrame;
    const Rect& target = to.visibleFrame;
    if (source.isEmpty() || target.isEmpty())
        return;
    Rect present = toAppKit(focused->frame);
    double sx = target.width / source.width;
    double sy = target.height / source.height;
    double w = std::min(std::round(present.width * sx), target.width);
    double h = std::min(std::round(present.height * sy), target.height);
    double x = std::clamp(std::round(target.minX() + (present.minX() - source.minX()) * sx), target.minX(), target.maxX() - w);
    double y = std::clamp(std::round(target.minY() + (present.minY() - source.minY()) * sy), target.minY(), target.maxY() - h);

    remember(focused->window, focused->frame);
    set(focused->window, toAppKit({ x, y, w, h }));
    auto action = direction == DisplayDirection::next ? ShortcutAction::nextDisplay : ShortcutAction::previousDisplay;
    feedback(title(action), displaySymbol);
}

void WindowManager::restore()
{
    if (!m_ports.accessibility.isTrusted())
        return;
    auto window = focusedWindow();
    if (!window)
        return;
    for (auto entry = m_history.rbegin(); entry != m_history.rend(); ++entry) {
        if (entry->window != *window)
            continue;
        Rect saved = entry->frame;
        m_history.erase(std::next(entry).base());
        set(*window, saved);
        feedback(restoredTitle, restoredSymbol);
        return;
    }
}

bool WindowManager::perform(ShortcutAction action)
{
    if (auto layout = windowLayout(action)) {
        apply(*layout);
        return true;
    }
    switch (action) {
    case ShortcutAction::restore:
        restore();
        return true;
    case ShortcutAction::nextDisplay:
        moveToDisplay(DisplayDirection::next);
        return true;
    case ShortcutAction::previousDisplay:
        moveToDisplay(DisplayDirection::previous);
        return true;
    default:
        return false;
    }
}

} // namespace quillmar
