#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/settings/Settings.h"
#include "core/windows/DragChord.h"
#include "core/windows/SnapZones.h"

namespace quillmar {

// The modifier held with Tab to open the switcher.
enum class SwitcherTrigger { option, command };
// Which Spaces' windows the switcher lists.
enum class SwitcherSpaces { current, all };
// What clicking an application's Dock icon does when it is already in front.
enum class DockClickAction { minimize, hide, cycle };

// The window features' settings. Registers its defaults when created, then loads every value; the getters
// read the loaded values, which follow later changes of the keys through the settings' observers. A setter
// writes its key back. Confined to the thread that changes the settings (the main thread).
class WindowsPreferences final {
public:
    using StringList = std::vector<std::string>;

    // The raw values are the ones named by the enums' readers below.
    static constexpr SettingKey<std::string_view> switcherTriggerKey { "windows.switcher.trigger", "option" };
    static constexpr SettingKey<std::string_view> switcherSpacesKey { "windows.switcher.spaces", "all" };
    static constexpr SettingKey<bool> switcherCurrentDisplayKey { "windows.switcher.currentDisplay", false };
    static constexpr SettingKey<bool> switcherMinimizedKey { "windows.switcher.minimized", true };
    static constexpr SettingKey<bool> switcherHiddenAppsKey { "windows.switcher.hiddenApps", true };
    static constexpr SettingKey<bool> switcherWindowlessAppsKey { "windows.switcher.windowlessApps", true };
    static constexpr SettingKey<bool> switcherActionKeysKey { "windows.switcher.actionKeys", true };
    static constexpr SettingKey<bool> switcherPreviewsKey { "windows.switcher.previews", true };
    // Seconds.
    static constexpr SettingKey<double> dockPreviewDelayKey { "windows.dockPreview.delay", 0.3 };
    static constexpr SettingKey<bool> dockPreviewCurrentSpaceKey { "windows.dockPreview.currentSpace", false };
    static constexpr SettingKey<std::string_view> dockClickActionKey { "windows.dockClicks.action", "minimize" };
    static constexpr SettingKey<bool> maximizeRestoresKey { "windows.maximize.restores", true };
    static constexpr SettingKey<StringList> maximizeExcludedKey { "windows.maximize.excluded", {} };
    static constexpr SettingKey<bool> snapEdgesKey { "windows.snap.edges", true };
    static constexpr SettingKey<bool> snapSidesKey { "windows.snap.sides", true };
    static constexpr SettingKey<bool> snapCornersKey { "windows.snap.corners", true };
    static constexpr SettingKey<std::string_view> snapTopKey { "windows.snap.top", "maximize" };
    static constexpr SettingKey<std::string_view> snapBottomKey { "windows.snap.bottom", "off" };
    static constexpr SettingKey<bool> snapRestoresSizeKey { "windows.snap.restoresSize", true };
    static constexpr SettingKey<bool> dragMoveKey { "windows.drag.move", true };
    static constexpr SettingKey<bool> dragResizeKey { "windows.drag.resize", true };
    static constexpr SettingKey<std::string_view> dragChordKey { "windows.drag.chord", "controlOption" };
    static constexpr SettingKey<StringList> quitOnCloseAppsKey { "windows.quitOnClose.apps", {} };
    // App-wide: the gap kept between laid-out windows, in points ("Gap between windows").
    static constexpr SettingKey<double> windowGapKey { "windowLayout.gap", 0 };
    // App-wide: whether window layouts tap the trackpad.
    static constexpr SettingKey<bool> hapticsKey { "windowLayout.haptics", true };

    // The bounds of the Dock preview delay, in seconds; a saved value outside is clamped on load.
    static constexpr double minimumDockPreviewDelay = 0.2;
    static constexpr double maximumDockPreviewDelay = 0.9;

    // The switcher's enums from their raw values; none for an unknown one.
    static constexpr std::optional<SwitcherTrigger> switcherTriggerNamed(std::string_view raw)
    {
        if (raw == "option")
            return SwitcherTrigger::option;
        if (raw == "command")
            return SwitcherTrigger::command;
        return std::nullopt;
    }
    static constexpr std::optional<SwitcherSpaces> switcherSpacesNamed(std::string_view raw)
    {
        if (raw == "current")
            return SwitcherSpaces::current;
        if (raw == "all")
            return SwitcherSpaces::all;
        return std::nullopt;
    }

    explicit WindowsPreferences(Settings& settings);
    ~WindowsPreferences();

    WindowsPreferences(const WindowsPreferences&) = delete;
    WindowsPreferences& operator=(const WindowsPreferences&) = delete;

    SwitcherTrigger switcherTrigger() const { return m_values.switcherTrigger; }
    SwitcherSpaces switcherSpaces() const { return m_values.switcherSpaces; }
    bool switcherCurrentDisplay() const { return m_values.switcherCurrentDisplay; }
    bool switcherMinimized() const { return m_values.switcherMinimized; }
    bool switcherHiddenApps() const { return m_values.switcherHiddenApps; }
    bool switcherWindowlessApps() const { return m_values.switcherWindowlessApps; }
    bool switcherActionKeys() const { return m_values.switcherActionKeys; }
    bool switcherPreviews() const { return m_values.switcherPreviews; }
    double dockPreviewDelay() const { return m_values.dockPreviewDelay; } // seconds
    bool dockPreviewCurrentSpace() const { return m_values.dockPreviewCurrentSpace; }
    DockClickAction dockClickAction() const { return m_values.dockClickAction; }
    bool maximizeRestores() const { return m_values.maximizeRestores; }
    const std::vector<std::string>& maximizeExcluded() const { return m_values.maximizeExcluded; }
    bool snapEdges() const { return m_values.snapEdges; }
    bool snapSides() const { return m_values.snapSides; }
    bool snapCorners() const { return m_values.snapCorners; }
    SnapZones::TopEdge snapTop() const { return m_values.snapTop; }
    SnapZones::BottomEdge snapBottom() const { return m_values.snapBottom; }
    bool snapRestoresSize() const { return m_values.snapRestoresSize; }
    bool dragMove() const { return m_values.dragMove; }
    bool dragResize() const { return m_values.dragResize; }
    DragChord dragChord() const { return m_values.dragChord; }
    const std::vector<std::string>& quitOnCloseApps() const { return m_values.quitOnCloseApps; }
    double windowGap() const { return m_values.windowGap; } // points
    bool haptics() const { return m_values.haptics; }

    // The enabled snap zones, from the sides, corners, top and bottom preferences.
    SnapZones::Config snapConfig() const;

    void setSwitcherTrigger(SwitcherTrigger trigger);
    void setSwitcherSpaces(SwitcherSpaces spaces);
    void setDockClickAction(DockClickAction action);
    void setSnapTop(SnapZones::TopEdge edge);
    void setSnapBottom(SnapZones::BottomEdge edge);
    void setDragChord(DragChord chord);
    void setDockPreviewDelay(double seconds);
    void setWindowGap(double points);
    // For the bool and string-array keys above ("windows.snap.edges").
    void setFlag(const SettingKey<bool>& key, bool on);
    void setList(const SettingKey<StringList>& key, StringList values);

private:
    // Filled in by load() from the keys, before any getter runs.
    struct Values {
        SwitcherTrigger switcherTrigger;
        SwitcherSpaces switcherSpaces;
        bool switcherCurrentDisplay;
        bool switcherMinimized;
        bool switcherHiddenApps;
        bool switcherWindowlessApps;
        bool switcherActionKeys;
        bool switcherPreviews;
        double dockPreviewDelay;
        bool dockPreviewCurrentSpace;
        DockClickAction dockClickAction;
        bool maximizeRestores;
        std::vector<std::string> maximizeExcluded;
        bool snapEdges;
        bool snapSides;
        bool snapCorners;
        SnapZones::TopEdge snapTop;
        SnapZones::BottomEdge snapBottom;
        bool snapRestoresSize;
        bool dragMove;
        bool dragResize;
        DragChord dragChord;
        std::vector<std::string> quitOnCloseApps;
        double windowGap;
        bool haptics;
    };

    void load();

    Settings& m_settings;
    Settings::ObserverId m_observer = 0;
    Values m_values;
};

} // namespace quillmar
