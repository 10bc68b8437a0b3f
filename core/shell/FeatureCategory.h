#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace quillmar {

enum class FeatureID : unsigned char;

// The groups the settings window shows its pages under, in this order.
enum class FeatureCategory : unsigned char {
    monitor,
    everyday,
    capture,
    sound,
    windows,
    clipboard,
    input,
    display,
    apps,
};

inline constexpr std::array allFeatureCategories {
    FeatureCategory::monitor, FeatureCategory::everyday, FeatureCategory::capture,
    FeatureCategory::sound, FeatureCategory::windows, FeatureCategory::clipboard,
    FeatureCategory::input, FeatureCategory::display, FeatureCategory::apps,
};

// The raw value, which is also the category's id ("monitor", "everyday", ...).
std::string_view rawValue(FeatureCategory category);
std::optional<FeatureCategory> featureCategoryFromRawValue(std::string_view raw);

// The features of a category in declaration order, found by walking every feature.
std::vector<FeatureID> features(FeatureCategory category);

// The settings window's groups: every category with its features, in category order, empty ones left out.
struct SettingsGroup {
    FeatureCategory category;
    std::vector<FeatureID> features;
};
std::vector<SettingsGroup> settingsGroups();

} // namespace quillmar
