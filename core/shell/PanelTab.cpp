#include "core/shell/PanelTab.h"

namespace quillmar {

namespace {
using enum FeatureID;
constexpr std::array clipboardTab { clipboard, snippets, shelf };
constexpr std::array windowsTab { windowLayout, quitApps };
constexpr std::array soundTab { sound, volumeMixer, micTools, outputSwitching };
constexpr std::array displaysTab { displays, keepAwake };
constexpr std::array monitorTab { monitor, speedTest, fanControl, ports };
constexpr std::array agentsTab { aiAgents };
constexpr std::array appsTab { appUpdates, uninstaller, cleaner, homebrew };
}

std::string_view rawValue(PanelTab tab)
{
    switch (tab) {
    case PanelTab::home: return "home";
    case PanelTab::clipboard: return "clipboard";
    case PanelTab::windows: return "windows";
    case PanelTab::sound: return "sound";
    case PanelTab::displays: return "displays";
    case PanelTab::monitor: return "monitor";
    case PanelTab::agents: return "agents";
    case PanelTab::apps: return "apps";
    }
    return {};
}

std::span<const FeatureID> features(PanelTab tab)
{
    switch (tab) {
    case PanelTab::home: return {};
    case PanelTab::clipboard: return clipboardTab;
    case PanelTab::windows: return windowsTab;
    case PanelTab::sound: return soundTab;
    case PanelTab::displays: return displaysTab;
    case PanelTab::monitor: return monitorTab;
    case PanelTab::agents: return agentsTab;
    case PanelTab::apps: return appsTab;
    }
    return {};
}

bool isAvailable(PanelTab tab, FeatureSet enabled)
{
    auto presented = features(tab);
    if (presented.empty())
        return true;
    for (auto feature : presented) {
        if (enabled.contains(feature))
            return true;
    }
    return false;
}

std::vector<PanelTab> availableTabs(FeatureSet enabled)
{
    std::vector<PanelTab> tabs;
    for (auto tab : allPanelTabs) {
        if (isAvailable(tab, enabled))
            tabs.push_back(tab);
    }
    return tabs;
}

} // namespace quillmar
