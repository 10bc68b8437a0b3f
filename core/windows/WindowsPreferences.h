#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

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
    static constexpr std::string_view switcherTriggerKey = "windows.switcher.trigger";
    static constexpr std::string_view switcherSpacesKey = "windows.switcher.spaces";
    static constexpr std::string_view switcherCurrentDisplayKey = "windows.switcher.currentDisplay";
    static constexpr std::string_view switcherMinimizedKey = "windows.switcher.minimized";
    static constexpr std::string_view switcherHiddenAppsKey = "windows.switcher.hiddenApps";
    static constexpr std::string_view switcherWindowlessAppsKey = "windows.switcher.windowlessApps";
    static constexpr std::string_view switcherActionKeysKey = "windows.switcher.actionKeys";
    static constexpr std::string_view switcherPreviewsKey = "windows.switcher.previews";
    static constexpr std::string_view dockPreviewDelayKey = "windows.dockPreview.delay";
    static constexpr std::string_view dockPreviewCurrentSpaceKey = "windows.dockPreview.currentSpace";
    static constexpr std::string_view dockClickActionKey = "windows.dockClicks.action";
    static constexpr std::string_view maximizeRestoresKey = "windows.maximize.restores";
    static constexpr std::string_view maximizeExcludedKey = "windows.maximize.excluded";
    static constexpr std::string_view snapEdgesKey = "windows.snap.edges";
    static constexpr std::string_view snapSidesKey = "windows.snap.sides";
    static constexpr std::string_view snapCornersKey = "windows.snap.corners";
    static constexpr std::string_view snapTopKey = "windows.snap.top";
    static constexpr std::string_view snapBottomKey = "windows.snap.bottom";
    static constexpr std::string_view snapRestoresSizeKey = "windows.snap.restoresSize";
    static constexpr std::string_view dragMoveKey = "windows.drag.move";
    static constexpr std::string_view dragResizeKey = "windows.drag.resize";
    static constexpr std::string_view dragChordKey = "windows.drag.chord";
    static constexpr std::string_view quitOnCloseAppsKey = "windows.quitOnClose.apps";
    // App-wide: the gap kept between laid-out windows, in points ("Gap between windows").
    static constexpr std::string_view windowGapKey = "windowLayout.gap";
    // App-wide: whether window layouts tap the trackpad.
    static constexpr std::string_view hapticsKey = "windowLayout.haptics";

    // The bounds of the Dock preview delay, in seconds; a saved value outside is clamped on load.
    static constexpr double minimumDockPreviewDelay = 0.2;
    static constexpr double maximumDockPreviewDelay = 0.9;

    // Key to default value, for every key above.
    static nlohmann::json defaults();

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
    void setFlag(std::string_view key, bool on);
    void setList(std::string_view key, std::vector<std::string> values);

private:
    struct Values {
        SwitcherTrigger switcherTrigger = SwitcherTrigger::option;
        SwitcherSpaces switcherSpaces = SwitcherSpaces::all;
        bool switcherCurrentDisplay = false;
        bool switcherMinimized = true;
        bool switcherHiddenApps = true;
        bool switcherWindowlessApps = true;
        bool switcherActionKeys = true;
        bool switcherPreviews = true;
        double dockPreviewDelay = 0.3;
        bool dockPreviewCurrentSpace = false;
        DockClickAction dockClickAction = DockClickAction::minimize;
        bool maximizeRestores = true;
        std::vector<std::string> maximizeExcluded;
        bool snapEdges = true;
        bool snapSides = true;
        bool snapCorners = true;
        SnapZones::TopEdge snapTop = SnapZones::TopEdge::maximize;
        SnapZones::BottomEdge snapBottom = SnapZones::BottomEdge::off;
        bool snapRestoresSize = true;
        bool dragMove = true;
        bool dragResize = true;
        DragChord dragChord = DragChord::controlOption;
        std::vector<std::string> quitOnCloseApps;
        double windowGap = 0;
        bool haptics = true;
    };

    void load();

    Settings& m_settings;
    Settings::ObserverId m_observer = 0;
    Values m_values;
};

} // namespace quillmar
