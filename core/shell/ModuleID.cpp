#include "core/shell/ModuleID.h"

namespace quillmar {

namespace {

using enum FeatureID;

constexpr std::array islandFeatures { island };
constexpr std::array captureFeatures { screenshot, screenRecording, colorPicker, textGrab };
constexpr std::array commandFeatures { commandBar };
constexpr std::array mixerFeatures { sound, volumeMixer, micTools, outputSwitching, musicBlocker };
constexpr std::array windowsFeatures { windowLayout, quitApps, appSwitcher, dockPreview, dockClicks, maximizeButton,
    dragSnap, fixedSpaces, quitOnClose };
constexpr std::array inputFeatures { quitProtection, mouseScroll, closeProtection, smoothScroll, linearScroll,
    pointerAcceleration, focusFollowsMouse, sidewaysScroll, sideButtons, mouseButtons, middleClick, clickFilter,
    keyDebounce, superKey };
constexpr std::array displaysFeatures { displays, extraBrightness, bluetoothSleep };
constexpr std::array monitorFeatures { monitor, fanControl, speedTest, ports };
constexpr std::array filesFeatures { keepAwake, scratchpad, shelf, finderShortcuts, radialMenu, diskImageInstaller,
    mediaTools, messagingDownloads };
constexpr std::array appsFeatures { appUpdates, uninstaller, cleaner, homebrew };
constexpr std::array toolsFeatures { quickToggles, timer, clipboard, cleanLinks, plainPaste, snippets, quickPanel,
    cleaningMode, cameraPreview, aiAgents };

static_assert(islandFeatures.size() + captureFeatures.size() + commandFeatures.size() + mixerFeatures.size()
        + windowsFeatures.size() + inputFeatures.size() + displaysFeatures.size() + monitorFeatures.size()
        + filesFeatures.size() + appsFeatures.size() + toolsFeatures.size()
    == featureCount);

} // namespace

std::string_view name(ModuleID module)
{
    switch (module) {
    case ModuleID::island: return "Island";
    case ModuleID::capture: return "Capture";
    case ModuleID::command: return "Command";
    case ModuleID::mixer: return "Mixer";
    case ModuleID::windows: return "Windows";
    case ModuleID::input: return "Input";
    case ModuleID::displays: return "Displays";
    case ModuleID::monitor: return "Monitor";
    case ModuleID::files: return "Files";
    case ModuleID::apps: return "Apps";
    case ModuleID::tools: return "Tools";
    }
    return {};
}

std::span<const FeatureID> ownedFeatures(ModuleID module)
{
    switch (module) {
    case ModuleID::island: return islandFeatures;
    case ModuleID::capture: return captureFeatures;
    case ModuleID::command: return commandFeatures;
    case ModuleID::mixer: return mixerFeatures;
    case ModuleID::windows: return windowsFeatures;
    case ModuleID::input: return inputFeatures;
    case ModuleID::displays: return displaysFeatures;
    case ModuleID::monitor: return monitorFeatures;
    case ModuleID::files: return filesFeatures;
    case ModuleID::apps: return appsFeatures;
    case ModuleID::tools: return toolsFeatures;
    }
    return {};
}

} // namespace quillmar
