#include "core/windows/WindowsPreferences.h"

#include <algorithm>
#include <cmath>

namespace quillmar {

namespace {

std::optional<DockClickAction> dockClickActionNamed(std::string_view raw)
{
    if (raw == "minimize")
        return DockClickAction::minimize;
    if (raw == "hide")
        return DockClickAction::hide;
    if (raw == "cycle")
        return DockClickAction::cycle;
    return std::nullopt;
}

// The saved raw value's case; an unknown one reads as the key's default.
template<typename Enum, typename Named>
Enum enumValue(const Settings& settings, const SettingKey<std::string_view>& key, Named named)
{
    if (auto value = named(settings.value(key)))
        return *value;
    return *named(key.defaultValue);
}

} // namespace

WindowsPreferences::WindowsPreferences(Settings& settings)
    : m_settings(settings)
{
    m_settings.registerDefaults(switcherTriggerKey, switcherSpacesKey, switcherCurrentDisplayKey, switcherMinimizedKey,
        switcherHiddenAppsKey, switcherWindowlessAppsKey, switcherActionKeysKey, switcherPreviewsKey, dockPreviewDelayKey,
        dockPreviewCurrentSpaceKey, dockClickActionKey, maximizeRestoresKey, maximizeExcludedKey, snapEdgesKey, snapSidesKey,
        snapCornersKey, snapTopKey, snapBottomKey, snapRestoresSizeKey, dragMoveKey, dragResizeKey, dragChordKey,
        quitOnCloseAppsKey, windowGapKey, hapticsKey);
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
    Values v;
    v.switcherTrigger = enumValue<SwitcherTrigger>(s, switcherTriggerKey, switcherTriggerNamed);
    v.switcherSpaces = enumValue<SwitcherSpaces>(s, switcherSpacesKey, switcherSpacesNamed);
    v.switcherCurrentDisplay = s.value(switcherCurrentDisplayKey);
    v.switcherMinimized = s.value(switcherMinimizedKey);
    v.switcherHiddenApps = s.value(switcherHiddenAppsKey);
    v.switcherWindowlessApps = s.value(switcherWindowlessAppsKey);
    v.switcherActionKeys = s.value(switcherActionKeysKey);
    v.switcherPreviews = s.value(switcherPreviewsKey);
    double delay = s.value(dockPreviewDelayKey);
    v.dockPreviewDelay = std::isnan(delay) ? dockPreviewDelayKey.defaultValue
                                           : std::clamp(delay, minimumDockPreviewDelay, maximumDockPreviewDelay);
    v.dockPreviewCurrentSpace = s.value(dockPreviewCurrentSpaceKey);
    v.dockClickAction = enumValue<DockClickAction>(s, dockClickActionKey, dockClickActionNamed);
    v.maximizeRestores = s.value(maximizeRestoresKey);
    v.maximizeExcluded = s.value(maximizeExcludedKey);
    v.snapEdges = s.value(snapEdgesKey);
    v.snapSides = s.value(snapSidesKey);
    v.snapCorners = s.value(snapCornersKey);
    v.snapTop = enumValue<SnapZones::TopEdge>(s, snapTopKey, topEdgeFromRawValue);
    v.snapBottom = enumValue<SnapZones::BottomEdge>(s, snapBottomKey, bottomEdgeFromRawValue);
    v.snapRestoresSize = s.value(snapRestoresSizeKey);
    v.dragMove = s.value(dragMoveKey);
    v.dragResize = s.value(dragResizeKey);
    v.dragChord = enumValue<DragChord>(s, dragChordKey, dragChordFromRawValue);
    v.quitOnCloseApps = s.value(quitOnCloseAppsKey);
    double gap = s.value(windowGapKey);
    // A gap is a distance: a negative or unreadable one would overlap the tiles.
    v.windowGap = std::isfinite(gap) ? std::max(gap, 0.0) : 0.0;
    v.haptics = s.value(hapticsKey);
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

void WindowsPreferences::setFlag(const SettingKey<bool>& name, bool on)
{
    m_settings.set(name, on);
}

void WindowsPreferences::setList(const SettingKey<StringList>& name, StringList values)
{
    m_settings.set(name, std::move(values));
}

} // namespace quillmar
