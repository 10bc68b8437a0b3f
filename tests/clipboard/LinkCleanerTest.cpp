#include <gtest/gtest.h>

#include "core/clipboard/LinkCleaner.h"
#include "core/clipboard/WebLink.h"

namespace quillmar {
namespace {

struct CleanRow {
    const char* name;
    const char* link;
    std::optional<std::string> cleaned;
};

class LinkCleaning : public testing::TestWithParam<CleanRow> { };

TEST_P(LinkCleaning, RemovesOnlyTracking)
{
    EXPECT_EQ(LinkCleaner::clean(GetParam().link), GetParam().cleaned);
}

INSTANTIATE_TEST_SUITE_P(Links, LinkCleaning,
    testing::Values(
        CleanRow { "CampaignTagsGoWithTheQuestionMark", "https://example.com/a?utm_source=x&utm_medium=y", "https://example.com/a" },
        CleanRow { "OtherParametersKeepOrderAndSpelling", "https://example.com/s?q=a%20b&utm_campaign=z&page=2&fbclid=1",
            "https://example.com/s?q=a%20b&page=2" },
        CleanRow { "FragmentStays", "https://example.com/?gclid=abc#section-2", "https://example.com/#section-2" },
        CleanRow { "NamesIgnoreCase", "https://example.com/?UTM_Source=x&id=3", "https://example.com/?id=3" },
        CleanRow { "PercentEncodedNames", "https://example.com/?utm%5Fsource=x&id=3", "https://example.com/?id=3" },
        CleanRow { "ParameterWithoutValue", "http://example.com/p?fbclid&x=1", "http://example.com/p?x=1" },
        CleanRow { "SurroundingWhitespaceIsTrimmed", "  https://example.com/?msclkid=1\n", "https://example.com/" },
        CleanRow { "MatomoPrefix", "https://example.com/?pk_campaign=a&mtm_kwd=b", "https://example.com/" },
        CleanRow { "MailCampaign", "https://shop.test/item?mc_eid=1&mc_cid=2&color=red", "https://shop.test/item?color=red" },
        CleanRow { "AlreadyClean", "https://example.com/search?q=utm_source", std::nullopt },
        CleanRow { "PrefixAloneIsNotTracking", "https://example.com/?utm_=1", std::nullopt },
        CleanRow { "LookalikeNameStays", "https://example.com/?sourceid=chrome&ref=home", std::nullopt },
        CleanRow { "NoQuery", "https://example.com/path", std::nullopt },
        CleanRow { "NotWeb", "ftp://example.com/?utm_source=x", std::nullopt },
        CleanRow { "NotALink", "utm_source=x", std::nullopt },
        CleanRow { "TwoWords", "https://a.test/?utm_source=x and more", std::nullopt }),
    [](const testing::TestParamInfo<CleanRow>& row) { return row.param.name; });

TEST(WebLink, SplitsAndRejoinsExactly)
{
    auto url = WebLink::parse("HTTPS://user@WWW.Example.com:8080/a/b?x=1#frag");
    ASSERT_TRUE(url);
    EXPECT_EQ(url->scheme, "https");
    EXPECT_EQ(url->host, "www.example.com");
    EXPECT_EQ(url->path, "/a/b");
    EXPECT_EQ(url->query, "x=1");
    EXPECT_EQ(url->fragment, "frag");
    EXPECT_EQ(url->toString(), "https://user@WWW.Example.com:8080/a/b?x=1#frag");

    auto ipv6 = WebLink::parse("http://[::1]:80/");
    ASSERT_TRUE(ipv6);
    EXPECT_EQ(ipv6->host, "::1");

    for (const char* text : { "https://", "https:///path", "mailto:a@b.c", "https://a b.com", "example.com", "http://[::1" })
        EXPECT_FALSE(WebLink::parse(text)) << text;
}

} // namespace
} // namespace quillmar
