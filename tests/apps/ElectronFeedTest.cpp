#include <gtest/gtest.h>

#include "core/apps/ElectronFeed.h"
#include "core/apps/SystemAppsPorts.h"

namespace quillmar {
namespace {

struct SafeNameCase {
    const char* name;
    std::string candidate;
    bool safe;
};

class ElectronSafeNameTest : public testing::TestWithParam<SafeNameCase> { };

TEST_P(ElectronSafeNameTest, Judges)
{
    EXPECT_EQ(ElectronFeed::isSafeName(GetParam().candidate), GetParam().safe);
}

INSTANTIATE_TEST_SUITE_P(Names, ElectronSafeNameTest,
    testing::Values(
        SafeNameCase { "Plain", "electron-app_2.x", true },
        SafeNameCase { "SingleCharacter", "a", true },
        SafeNameCase { "HundredCharacters", std::string(100, 'n'), true },
        SafeNameCase { "HundredAndOneCharacters", std::string(101, 'n'), false },
        SafeNameCase { "Empty", "", false },
        SafeNameCase { "DoubleDot", "a..b", false },
        SafeNameCase { "SingleDots", "a.b.c", true },
        SafeNameCase { "Slash", "owner/repo", false },
        SafeNameCase { "Space", "my repo", false },
        SafeNameCase { "NonAscii", "caf\xC3\xA9", false },
        SafeNameCase { "Percent", "a%2F", false }),
    [](const auto& row) { return std::string(row.param.name); });

struct ConfigCase {
    const char* name;
    std::string text;
    std::optional<std::string> manifestURL; // none: no configuration
    std::optional<std::string> releasesPage;
};

class ElectronConfigTest : public testing::TestWithParam<ConfigCase> { };

TEST_P(ElectronConfigTest, Reads)
{
    auto config = ElectronFeed::config(GetParam().text);
    ASSERT_EQ(config.has_value(), GetParam().manifestURL.has_value());
    if (!config)
        return;
    EXPECT_EQ(config->manifestURL.text(), *GetParam().manifestURL);
    EXPECT_EQ(config->releasesPage ? std::optional(config->releasesPage->text()) : std::nullopt, GetParam().releasesPage);
}

INSTANTIATE_TEST_SUITE_P(Providers, ElectronConfigTest,
    testing::Values(
        ConfigCase { "GitHub", "provider: github\nowner: acme\nrepo: tool\nupdaterCacheDirName: tool-updater\n",
            "https://github.com/acme/tool/releases/latest/download/latest-mac.yml",
            "https://github.com/acme/tool/releases/latest" },
        ConfigCase { "GitHubPublicRepository", "provider: github\nowner: acme\nrepo: tool\nprivate: false\n",
            "https://github.com/acme/tool/releases/latest/download/latest-mac.yml",
            "https://github.com/acme/tool/releases/latest" },
        ConfigCase { "GitHubPrivateRepository", "provider: github\nowner: acme\nrepo: tool\nprivate: true\n", {}, {} },
        ConfigCase { "GitHubUnsafeOwner", "provider: github\nowner: a..b\nrepo: tool\n", {}, {} },
        ConfigCase { "GitHubOwnerWithSlash", "provider: github\nowner: a/../b\nrepo: tool\n", {}, {} },
        ConfigCase { "GitHubWithoutRepo", "provider: github\nowner: acme\n", {}, {} },
        ConfigCase { "GenericFolderWithoutSlash", "provider: generic\nurl: https://downloads.example.com/tool\n",
            "https://downloads.example.com/tool/latest-mac.yml", {} },
        ConfigCase { "GenericFolderWithSlash", "provider: generic\nurl: 'https://downloads.example.com/tool/'\n",
            "https://downloads.example.com/tool/latest-mac.yml", {} },
        ConfigCase { "GenericHostOnly", "provider: generic\nurl: https://downloads.example.com\n",
            "https://downloads.example.com/latest-mac.yml", {} },
        ConfigCase { "GenericChannel", "provider: generic\nurl: https://downloads.example.com/tool\nchannel: beta\n",
            "https://downloads.example.com/tool/beta-mac.yml", {} },
        ConfigCase { "GenericQueryStaysAfterTheFile", "provider: generic\nurl: https://cdn.example.com/tool?arch=arm64\n",
            "https://cdn.example.com/tool/latest-mac.yml?arch=arm64", {} },
        ConfigCase { "GenericUnsafeChannel", "provider: generic\nurl: https://cdn.example.com/tool\nchannel: ../../x\n", {}, {} },
        ConfigCase { "GenericPlainHttp", "provider: generic\nurl: http://downloads.example.com/tool\n", {}, {} },
        ConfigCase { "GenericLocalHost", "provider: generic\nurl: https://updates.local/tool\n", {}, {} },
        ConfigCase { "GenericNotAUrl", "provider: generic\nurl: downloads/tool\n", {}, {} },
        ConfigCase { "GenericWithoutUrl", "provider: generic\n", {}, {} },
        ConfigCase { "OtherProvider", "provider: s3\nbucket: tool\n", {}, {} },
        ConfigCase { "NoProvider", "owner: acme\nrepo: tool\n", {}, {} },
        ConfigCase { "NestedProviderIsNotRead", "publish:\n  provider: github\n  owner: acme\n  repo: tool\n", {}, {} }),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ElectronFeedTest, GitHubOriginIsAConfigurationValue)
{
    auto config = ElectronFeed::config("provider: github\nowner: acme\nrepo: tool\n", { "https://mirror.example.org" });
    ASSERT_TRUE(config.has_value());
    EXPECT_EQ(config->manifestURL.text(), "https://mirror.example.org/acme/tool/releases/latest/download/latest-mac.yml");
}

TEST(ElectronFeedTest, ManifestReadsVersionAndOptionalFields)
{
    auto manifest = ElectronFeed::manifest(
        "version: 3.4.1\nfiles:\n  - url: Tool-3.4.1-arm64-mac.zip\n    sha512: x\npath: Tool-3.4.1-arm64-mac.zip\n"
        "sha512: x\nreleaseDate: '2024-11-02T09:15:00.000Z'\nminimumSystemVersion: 20.0.0\n");
    ASSERT_TRUE(manifest.has_value());
    EXPECT_EQ(*manifest, (ElectronFeed::Manifest { "3.4.1", "20.0.0", "2024-11-02T09:15:00.000Z" }));

    EXPECT_EQ(ElectronFeed::manifest("version: '2.0'\n"), (ElectronFeed::Manifest { "2.0", std::nullopt, std::nullopt }));
    EXPECT_FALSE(ElectronFeed::manifest("path: Tool.zip\nreleaseDate: x\n").has_value());
    EXPECT_FALSE(ElectronFeed::manifest("version: ''\n").has_value());
}

struct OfferCase {
    const char* name;
    ElectronFeed::Manifest manifest;
    std::string kernelRelease;
    bool offered;
};

class ElectronOfferTest : public testing::TestWithParam<OfferCase> { };

TEST_P(ElectronOfferTest, Decides)
{
    EXPECT_EQ(ElectronFeed::isOffered(GetParam().manifest, GetParam().kernelRelease), GetParam().offered);
}

INSTANTIATE_TEST_SUITE_P(Rules, ElectronOfferTest,
    testing::Values(
        OfferCase { "NoMinimum", { "1.2.3", {}, {} }, "24.1.0", true },
        OfferCase { "MinimumBelowKernel", { "1.2.3", "20.0.0", {} }, "24.1.0", true },
        OfferCase { "MinimumEqualToKernel", { "1.2.3", "24.1", {} }, "24.1.0", true },
        OfferCase { "MinimumAboveKernelNumerically", { "1.2.3", "24.10.0", {} }, "24.9.0", false },
        OfferCase { "UnknownKernelRefusesAMinimum", { "1.2.3", "20.0.0", {} }, "", false },
        OfferCase { "PreReleaseVersion", { "1.2.3-beta.1", {}, {} }, "24.1.0", false },
        OfferCase { "VersionWithLetters", { "2.0rc", {}, {} }, "24.1.0", false }),
    [](const auto& row) { return std::string(row.param.name); });

TEST(KernelReleaseTest, SystemBackendReportsADottedRelease)
{
    auto release = makeSystemAppsPorts().kernelRelease->release();
#if defined(__unix__) || defined(__APPLE__)
    ASSERT_TRUE(release.has_value());
    EXPECT_NE(release->find('.'), std::string::npos) << *release;
#else
    EXPECT_FALSE(release.has_value());
#endif
}

} // namespace
} // namespace quillmar
