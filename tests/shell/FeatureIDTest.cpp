#include <gtest/gtest.h>

#include <set>

#include "core/shell/FeatureCategory.h"
#include "core/shell/FeatureID.h"

namespace quillmar {
namespace {

TEST(FeatureID, RawValuesAreUniqueAndRoundTrip)
{
    std::set<std::string_view> seen;
    for (auto feature : allFeatures()) {
        EXPECT_TRUE(seen.insert(rawValue(feature)).second) << rawValue(feature);
        EXPECT_EQ(featureFromRawValue(rawValue(feature)), feature);
    }
    EXPECT_EQ(featureFromRawValue("Clipboard"), std::nullopt);
    EXPECT_EQ(featureFromRawValue(""), std::nullopt);
}

TEST(FeatureCategory, GroupsListEveryFeatureOnceInDeclarationOrder)
{
    std::size_t total = 0;
    for (const auto& group : settingsGroups()) {
        for (std::size_t i = 1; i < group.features.size(); ++i)
            EXPECT_LT(group.features[i - 1], group.features[i]);
        total += group.features.size();
    }
    EXPECT_EQ(total, allFeatures().size());
}

} // namespace
} // namespace quillmar
