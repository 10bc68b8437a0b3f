#include <gtest/gtest.h>

#include "core/shell/PanelTab.h"

namespace quillmar {
namespace {

TEST(PanelTab, ATabIsAvailableWhileOneOfItsFeaturesIsOn)
{
    auto everything = FeatureSet::all();
    EXPECT_EQ(availableTabs(everything).size(), allPanelTabs.size());

    auto noSound = everything - FeatureSet { FeatureID::sound, FeatureID::volumeMixer, FeatureID::micTools,
        FeatureID::outputSwitching };
    EXPECT_FALSE(isAvailable(PanelTab::sound, noSound));
    EXPECT_TRUE(isAvailable(PanelTab::sound, noSound | FeatureSet { FeatureID::micTools }));

    EXPECT_EQ(availableTabs(FeatureSet {}), (std::vector<PanelTab> { PanelTab::home }));
}

} // namespace
} // namespace quillmar
