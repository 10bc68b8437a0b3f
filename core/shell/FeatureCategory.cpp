#include "core/shell/FeatureCategory.h"

#include "core/base/RawValueTable.h"
#include "core/shell/FeatureID.h"

namespace quillmar {

namespace {
constexpr auto categoryRawValues = rawValueTable<FeatureCategory>({
    { FeatureCategory::monitor, "monitor" },
    { FeatureCategory::everyday, "everyday" },
    { FeatureCategory::capture, "capture" },
    { FeatureCategory::sound, "sound" },
    { FeatureCategory::windows, "windows" },
    { FeatureCategory::clipboard, "clipboard" },
    { FeatureCategory::input, "input" },
    { FeatureCategory::display, "display" },
    { FeatureCategory::apps, "apps" },
});
}

std::string_view rawValue(FeatureCategory category)
{
    return categoryRawValues.rawValue(category);
}

std::optional<FeatureCategory> featureCategoryFromRawValue(std::string_view raw)
{
    return categoryRawValues.fromRawValue(raw);
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
