#include "core/windows/WindowsPreferences.h"

#include <algorithm>
#include <cmath>

namespace quillmar {

namespace {

std::string key(std::string_view name)
{
    return std::string(name);
}

} // namespace

nlohmann::json WindowsPreferences::defaults()
{
    auto empty = nlohmann::json::array();
    return {
        { key(switcherTriggerKey), "option" },
        { key(switcherSpacesKey), "all" },
        { key(switcherCurrentDisplayKey), false },
        { key(switcherMinimizedKey), true },
        { key(switcherHiddenAppsKey), true },
        { key(switcherWindowlessAppsKey), true },
        { key(switcherActionKeysKey), true },
        { key(switcherPreviewsKey), true },
        { key(dockPreviewDelayKey), 0.3 },
        { key(dockPreviewCurrentSpaceKey), false },
        { key(dockClickActionKey), "minimize" },
        { key(maximizeRestoresKey), true },
        { key(maximizeExcludedKey), empty },
        { key(snapEdgesKey), true },
        { key(snapSidesKey), true },
        { key(snapCornersKey), true },
        { key(snapTopKey), "maximize" },
        { key(snapBottomKey), "off" },
        { key(snapRestoresSizeKey), true },
        { key(dragMoveKey), true },
        { key(dragResizeKey), true },
        { key(dragChordKey), "controlOption" },
        { key(quitOnCloseAppsKey), empty },
        { key(windowGapKey), 0.0 },
        { key(hapticsKey), true },
    };
}

WindowsPreferences::WindowsPreferences(Settings& settings)
    : m_settings(settings)
{
    m_settings.registerDefaults(defaults());
    load();
    m_observer = m_settings.observe([this](std::string_view changed) {
        if (changed.starts_with("windows.") || changed.starts_with("windowLayout."))
            load();
    });
}

WindowsPreferences::~WindowsPreferences()
{
    m_settings.removeObserver(m_observer);
}

void WindowsPreferences::load()
{
    const auto& s = m_settings;
    auto flag = [&](std::string_view name, bool fallback) { return s.boolValue(name).value_or(fallback); };
    auto text = [&](std::string_view name) { return s.string(name).value_or(""); };
    auto list = [&](std::string_view name) { return s.stringArray(name).value_or(std::vector<std::string> {}); };

    Values v;
    v.switcherTrigger = text(switcherTriggerKey) == "command" ? SwitcherTrigger::command : SwitcherTrigger::option;
    v.switcherSpaces = text(switcherSpacesKey) == "current" ? SwitcherSpaces::current : SwitcherSpaces::all;
    v.switcherCurrentDisplay = flag(switcherCurrentDisplayKey, false);
    v.switcherMinimized = flag(switcherMinimizedKey, true);
    v.switcherHiddenApps = flag(switcherHiddenAppsKey, true);
    v.switcherWindowlessApps = flag(switcherWindowlessAppsKey, true);
    v.switcherActionKeys = flag(switcherActionKeysKey, true);
    v.switcherPreviews = flag(switcherPreviewsKey, true);
    double delay = s.number(dockPreviewDelayKey).value_or(0.3);
    v.dockPreviewDelay = std::isnan(delay) ? 0.3 : std::clamp(delay, minimumDockPreviewDelay, maximumDockPreviewDelay);
    v.dockPreviewCurrentSpace = flag(dockPreviewCurrentSpaceKey, false);
    auto click = text(dockClickActionKey);
    v.dockClickAction = click == "hide" ? DockClickAction::hide
        : click == "cycle"              ? DockClickAction::cycle
                                        : DockClickAction::minimize;
    v.maximizeRestores = flag(maximizeRestoresKey, true);
    v.maximizeExcluded = list(maximizeExcludedKey);
    v.snapEdges = flag(snapEdgesKey, true);
    v.snapSides = flag(snapSidesKey, true);
    v.snapCorners = flag(snapCornersKey, true);
    v.snapTop = topEdgeFromRawValue(text(snapTopKey)).value_or(SnapZones::TopEdge::maximize);
    v.snapBottom = bottomEdgeFromRawValue(text(snapBottomKey)).value_or(SnapZones::BottomEdge::off);
    v.snapRestoresSize = flag(snapRestoresSizeKey, true);
    v.dragMove = flag(dragMoveKey, true);
    v.dragResize = flag(dragResizeKey, true);
    v.dragChord = dragChordFromRawValue(text(dragChordKey)).value_or(DragChord::controlOption);
    v.quitOnCloseApps = list(quitOnCloseAppsKey);
    double gap = s.number(windowGapKey).value_or(0.0);
    // A gap is a distance: a negative or unreadable one would overlap the tiles.
    v.windowGap = std::isfinite(gap) ? std::max(gap, 0.0) : 0.0;
    v.haptics = flag(hapticsKey, true);
    m_values = std::move(v);
}

SnapZones::Config WindowsPreferences::snapConfig() const
{
    return { m_values.snapSides, m_values.snapCorners, m_values.snapTop, m_values.snapBottom };
}

void WindowsPreferences::setSwitcherTrigger(SwitcherTrigger trigger)
{
    m_settings.set(switcherTriggerKey, trigger == SwitcherTrigger::command ? "command" : "option");
}

void WindowsPreferences::setSwitcherSpaces(SwitcherSpaces spaces)
{
    m_settings.set(switcherSpacesKey, spaces == SwitcherSpaces::current ? "current" : "all");
}

void WindowsPreferences::setDockClickAction(DockClickAction action)
{
    const char* raw = action == DockClickAction::hide ? "hide" : action == DockClickAction::cycle ? "cycle" : "minimize";
    m_settings.set(dockClickActionKey, raw);
}

void WindowsPreferences::setSnapTop(SnapZones::TopEdge edge)
{
    m_settings.set(snapTopKey, std::string(rawValue(edge)));
}

void WindowsPreferences::setSnapBottom(SnapZones::BottomEdge edge)
{
    m_settings.set(snapBottomKey, std::string(rawValue(edge)));
}

void WindowsPreferences::setDragChord(DragChord chord)
{
    m_settings.set(dragChordKey, std::string(rawValue(chord)));
}

void WindowsPreferences::setDockPreviewDelay(double seconds)
{
    m_settings.set(dockPreviewDelayKey, seconds);
}

void WindowsPreferences::setWindowGap(double points)
{
    m_settings.set(windowGapKey, points);
}

void WindowsPreferences::setFlag(std::string_view name, bool on)
{
    m_settings.set(name, on);
}

void WindowsPreferences::setList(std::string_view name, std::vector<std::string> values)
{
    m_settings.set(name, std::move(values));
}

} // namespace quillmar
