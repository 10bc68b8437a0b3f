#include <gtest/gtest.h>

#include <set>

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
    EXPECT_EQ(seen.size(), 63u);
    EXPECT_EQ(featureFromRawValue("Clipboard"), std::nullopt);
    EXPECT_EQ(featureFromRawValue(""), std::nullopt);
}

TEST(FeatureID, TableKeepsItsDeliberateOddities)
{
    EXPECT_EQ(rawValue(allFeatures().front()), "monitor");
    EXPECT_EQ(rawValue(allFeatures().back()), "aiAgents");
    EXPECT_EQ(category(FeatureID::keepAwake), FeatureCategory::display);
    EXPECT_EQ(category(FeatureID::fanControl), FeatureCategory::monitor);
    EXPECT_EQ(category(FeatureID::speedTest), FeatureCategory::monitor);
    EXPECT_EQ(info(FeatureID::quitProtection).summary, "Hold ⌘Q to quit, so a stray press never closes your work.");
}

TEST(FeatureCategory, FeaturesFollowDeclarationOrderAndCoverEveryFeature)
{
    std::size_t total = 0;
    for (const auto& group : settingsGroups()) {
        for (std::size_t i = 1; i < group.features.size(); ++i)
            EXPECT_LT(group.features[i - 1], group.features[i]);
        total += group.features.size();
    }
    EXPECT_EQ(total, 63u);
    auto display = features(FeatureCategory::display);
    EXPECT_EQ(display.front(), FeatureID::keepAwake);
    EXPECT_EQ(featureCategoryFromRawValue("apps"), FeatureCategory::apps);
}

} // namespace
} // namespace quillmar
