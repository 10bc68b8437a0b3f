#pragma once

#include <array>
#include <span>
#include <string_view>
#include <vector>

#include "core/shell/FeatureSet.h"

namespace quillmar {

// The panel's tabs, in the order the panel shows them.
enum class PanelTab : unsigned char {
    home,
    clipboard,
    windows,
    sound,
    displays,
    monitor,
    agents,
    apps,
};

inline constexpr std::array allPanelTabs {
    PanelTab::home, PanelTab::clipboard, PanelTab::windows, PanelTab::sound,
    PanelTab::displays, PanelTab::monitor, PanelTab::agents, PanelTab::apps,
};

std::string_view rawValue(PanelTab tab);

// The features a tab presents; empty for a tab that is always there (home).
std::span<const FeatureID> features(PanelTab tab);

// A tab that presents features is available only while at least one of them is on.
bool isAvailable(PanelTab tab, FeatureSet enabled);

// The tabs to build, in order, unavailable ones skipped.
std::vector<PanelTab> availableTabs(FeatureSet enabled);

} // namespace quillmar
