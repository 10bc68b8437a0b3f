#include <gtest/gtest.h>

#include <string>

#include "core/versions/CatalogVersion.h"

namespace quillmar {
namespace {

using Verdict = CatalogVersion::Verdict;

struct VerdictRow {
    const char* name;
    std::string catalog;
    std::string shortVersion;
    std::string build;
    Verdict expected;
};

class CatalogVersionTest : public testing::TestWithParam<VerdictRow> { };

TEST_P(CatalogVersionTest, Verdict)
{
    const auto& row = GetParam();
    EXPECT_EQ(rawValue(CatalogVersion::verdict(row.catalog, row.shortVersion, row.build)), rawValue(row.expected))
        << row.catalog << " against " << row.shortVersion << " (" << row.build << ")";
}

INSTANTIATE_TEST_SUITE_P(Steps, CatalogVersionTest,
    testing::Values(
        VerdictRow { "LatestNamesNoVersion", "latest", "1.0", "5", Verdict::uncomparable },
        VerdictRow { "LatestInCapitals", " LATEST ", "1.0", "5", Verdict::uncomparable },
        VerdictRow { "EmptyCatalogue", "", "1.0", "5", Verdict::uncomparable },
        VerdictRow { "OnlyABuildAfterAComma", ",1234", "1.0", "5", Verdict::uncomparable },
        VerdictRow { "CommaCutThenEqualToShort", "5.0,1234", "5.0", "1234", Verdict::current },
        VerdictRow { "EqualToBuild", "1234", "5.0", "1234", Verdict::current },
        VerdictRow { "EqualAfterNormalising", "v5.0", " 5.0 ", "", Verdict::current },
        VerdictRow { "DashBuildNewer", "5.0-1300", "5.0", "1234", Verdict::update },
        VerdictRow { "DashBuildOlder", "5.0-1200", "5.0", "1234", Verdict::current },
        VerdictRow { "DashBuildSame", "5.0-1234", "5.0", "1234", Verdict::current },
        VerdictRow { "PlusBuildNewer", "5.0+1300", "5.0", "1234", Verdict::update },
        VerdictRow { "InstalledBuildNotANumber", "5.0-1300", "5.0", "12a", Verdict::current },
        VerdictRow { "InstalledBuildEmpty", "5.0-1300", "5.0", "", Verdict::current },
        VerdictRow { "SuffixNotANumberIsIgnored", "5.0-beta", "5.0", "1234", Verdict::current },
        VerdictRow { "EmptySuffixIsIgnored", "5.0-", "5.0", "1234", Verdict::current },
        VerdictRow { "BaseEqualToBuild", "1234-5", "5.0", "1234", Verdict::current },
        VerdictRow { "ExtraBuildComponentSame", "3.4.1.2207", "3.4.1", "2207", Verdict::current },
        VerdictRow { "ExtraBuildComponentDiffers", "3.4.1.2300", "3.4.1", "2207", Verdict::uncomparable },
        VerdictRow { "ExtraBuildComponentNeverAnUpdate", "3.4.1.9999", "3.4.1", "1", Verdict::uncomparable },
        VerdictRow { "LongerButDifferentPrefixIsCompared", "3.5.0.1", "3.4.1", "2207", Verdict::update },
        VerdictRow { "PlaceholderTemplate", "2.0", "1.0", "1", Verdict::uncomparable },
        VerdictRow { "PlaceholderZeros", "2.0", "0.0", "57", Verdict::uncomparable },
        VerdictRow { "PlaceholderEmpty", "2.0", "", "9", Verdict::uncomparable },
        VerdictRow { "PlaceholderButEqualToBuild", "9", "", "9", Verdict::current },
        VerdictRow { "CatalogueNewer", "2.1", "2.0", "200", Verdict::update },
        VerdictRow { "CatalogueOlder", "1.9", "2.0", "200", Verdict::current },
        VerdictRow { "TrailingZeroIsAnExtraBuildComponent", "2.0.0", "2.0", "200", Verdict::uncomparable },
        VerdictRow { "CatalogueEqualByComparison", "2.00", "2.0", "200", Verdict::current },
        VerdictRow { "PreReleaseOfInstalled", "2.0-beta", "2.0", "200", Verdict::current },
        VerdictRow { "CatalogueWithDashBaseNewer", "2.1-1", "2.0", "200", Verdict::update }),
    [](const auto& row) { return std::string(row.param.name); });

TEST(CatalogVersionRawValueTest, NamesTheVerdicts)
{
    EXPECT_EQ(rawValue(Verdict::update), "update");
    EXPECT_EQ(rawValue(Verdict::current), "current");
    EXPECT_EQ(rawValue(Verdict::uncomparable), "uncomparable");
}

} // namespace
} // namespace quillmar
