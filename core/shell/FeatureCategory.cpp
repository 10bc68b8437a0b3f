#include "core/shell/FeatureCategory.h"

#include "core/shell/FeatureID.h"

namespace quillmar {

namespace {
constexpr std::array<std::string_view, allFeatureCategories.size()> categoryRawValues {
    "monitor", "everyday", "capture", "sound", "windows", "clipboard", "input", "display", "apps",
};
}

std::string_view rawValue(FeatureCategory category)
{
    return categoryRawValues[static_cast<std::size_t>(category)];
}

std::optional<FeatureCategory> featureCategoryFromRawValue(std::string_view raw)
{
    for (auto category : allFeatureCategories) {
        if (rawValue(category) == raw)
            return category;
    }
    return std::nullopt;
}

std::vector<FeatureID> features(FeatureCategory category)
{
    std::vector<FeatureID> result;
    for (auto feature : allFeatures()) {
        if (info(feature).category == category)
            result.push_back(feature);
    }
    return result;
}

std::vector<SettingsGroup> settingsGroups()
{
    std::vector<SettingsGroup> groups;
    for (auto category : allFeatureCategories) {
        auto members = features(category);
        if (!members.empty())
            groups.push_back({ category, std::move(members) });
    }
    return groups;
}

} // namespace quillmar
