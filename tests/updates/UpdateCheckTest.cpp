#include <gtest/gtest.h>

#include <map>
#include <mutex>

#include "core/updates/UpdateCheck.h"

namespace quillmar {
namespace {

// Answers from a table; records every URL asked for. Safe to call from the check's threads.
class FakeFetcher final : public FeedFetcher {
public:
    void answer(const std::string& url, FetchResult result) { m_answers.emplace(url, std::move(result)); }

    FetchResult fetch(std::string_view url, std::size_t cap) override
    {
        std::lock_guard guard(m_lock);
        m_asked.emplace_back(url);
        m_caps.push_back(cap);
        auto found = m_answers.find(std::string(url));
        if (found == m_answers.end())
            return FetchFailure::notFound();
        return found->second;
    }

    std::vector<std::string> asked() const
    {
        std::lock_guard guard(m_lock);
        return m_asked;
    }
    std::vector<std::size_t> caps() const
    {
        std::lock_guard guard(m_lock);
        return m_caps;
    }

private:
    mutable std::mutex m_lock;
    std::map<std::string, FetchResult> m_answers;
    std::vector<std::string> m_asked;
    std::vector<std::size_t> m_caps;
};

InstalledBundle bundle(std::string name, std::string shortVersion, std::string build)
{
    InstalledBundle app;
    app.url = "/Applications/" + name + ".app";
    app.name = name;
    app.bundleID = "com.example." + name;
    app.shortVersion = std::move(shortVersion);
    app.build = std::move(build);
    return app;
}

InstalledBundle withFeed(InstalledBundle app, const std::string& url)
{
    app.feedURL = Url::parse(url);
    return app;
}

InstalledBundle withElectron(InstalledBundle app, const std::string& manifest)
{
    app.electron = ElectronFeed::Config { *Url::parse(manifest), Url::parse("https://example.com/releases") };
    return app;
}

InstalledBundle fromStore(InstalledBundle app)
{
    app.isAppStore = true;
    return app;
}

std::string appcast(const std::string& items)
{
    return R"(<?xml version="1.0"?><rss version="2.0" xmlns:sparkle="http://www.andymatuschak.org/xml-namespaces/sparkle"><channel>)"
        + items + "</channel></rss>";
}

std::string item(const std::string& version, const std::string& shortVersion)
{
    return "<item><title>v" + shortVersion + "</title><sparkle:version>" + version
        + "</sparkle:version><sparkle:shortVersionString>" + shortVersion
        + "</sparkle:shortVersionString><sparkle:releaseNotesLink>https://example.com/notes/" + shortVersion
        + "</sparkle:releaseNotesLink><enclosure url=\"https://example.com/App-" + shortVersion
        + ".zip\" length=\"1\" type=\"application/octet-stream\"/></item>";
}

// The feed with a document type that declares an entity, after its XML declaration.
std::string declaringAnEntity(std::string feed)
{
    return feed.insert(feed.find("?>") + 2, "<!DOCTYPE rss [<!ENTITY v \"2.0\">]>");
}

// `levels` elements, each inside the one before.
std::string nested(int levels)
{
    std::string text;
    for (int level = 0; level < levels; ++level)
        text += "<a>";
    for (int level = 0; level < levels; ++level)
        text += "</a>";
    return text;
}

UpdateEnvironment environment()
{
    UpdateEnvironment result;
    result.system = { 15, 0, 0 };
    result.architecture = "arm64";
    result.kernelRelease = "24.0.0";
    result.storeBatchSize = 2;
    return result;
}

TEST(UpdateCheck, AppsWithoutACheckableSourceCostNoTraffic)
{
    FakeFetcher fetcher;
    auto insecure = bundle("Plain", "1.0", "1");
    insecure.hasInsecureFeed = true;
    auto rows = UpdateCheck(fetcher, environment()).run({ insecure, bundle("Nothing", "2.0", "2") });
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].status, UpdateStatus::notCheckable);
    EXPECT_EQ(rows[0].problem, UpdateProblem::insecureFeed);
    EXPECT_EQ(rows[1].problem, UpdateProblem::noSource);
    EXPECT_TRUE(fetcher.asked().empty());
}

TEST(UpdateCheck, AppcastOffersTheBestItemWithItsNotes)
{
    FakeFetcher fetcher;
    fetcher.answer("https://example.com/a.xml", std::string(appcast(item("120", "1.2") + item("130", "1.3"))));
    auto rows = UpdateCheck(fetcher, environment()).run({ withFeed(bundle("A", "1.2", "120"), "https://example.com/a.xml") });
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].source, UpdateSource::appcast);
    EXPECT_EQ(rows[0].status, UpdateStatus::updateAvailable);
    EXPECT_EQ(rows[0].available, "1.3 (130)");
    EXPECT_EQ(rows[0].releaseNotesURL, "https://example.com/notes/1.3");
    EXPECT_EQ(rows[0].installedText(), "1.2 (120)");
    EXPECT_EQ(fetcher.caps(), std::vector<std::size_t> { UpdateEnvironment::feedCap });
}

struct FeedOutcomeRow {
    const char* name;
    std::optional<std::string> body; // none: the fetch fails with `failure`
    FetchFailure failure;
    UpdateStatus status;
    std::optional<UpdateProblem> problem;
};

class FeedOutcome : public testing::TestWithParam<FeedOutcomeRow> { };

TEST_P(FeedOutcome, SettlesTheRow)
{
    const auto& row = GetParam();
    FakeFetcher fetcher;
    if (row.body)
        fetcher.answer("https://example.com/a.xml", std::string(*row.body));
    else
        fetcher.answer("https://example.com/a.xml", row.failure);
    auto rows = UpdateCheck(fetcher, environment()).run({ withFeed(bundle("A", "1.3", "130"), "https://example.com/a.xml") });
    EXPECT_EQ(rows[0].status, row.status);
    EXPECT_EQ(rows[0].problem, row.problem);
}

INSTANTIATE_TEST_SUITE_P(Rows, FeedOutcome,
    testing::Values(FeedOutcomeRow { "newestIsInstalled", appcast(item("130", "1.3")), {}, UpdateStatus::upToDate, {} },
        FeedOutcomeRow { "emptyFeed", appcast(""), {}, UpdateStatus::upToDate, {} },
        FeedOutcomeRow { "notXml", std::string("{\"json\":true}"), {}, UpdateStatus::notCheckable, UpdateProblem::malformed },
        FeedOutcomeRow { "serverError", std::nullopt, FetchFailure::http(503), UpdateStatus::notCheckable,
            UpdateProblem::unreachable },
        FeedOutcomeRow { "gone", std::nullopt, FetchFailure::notFound(), UpdateStatus::notCheckable,
            UpdateProblem::unreachable },
        FeedOutcomeRow { "redirectRefused", std::nullopt, FetchFailure::blocked(), UpdateStatus::notCheckable,
            UpdateProblem::refused },
        FeedOutcomeRow { "tooLarge", std::nullopt, FetchFailure::tooLarge(), UpdateStatus::notCheckable,
            UpdateProblem::tooLarge },
        FeedOutcomeRow { "declaresAnEntity", declaringAnEntity(appcast(item("200", "2.0"))), {}, UpdateStatus::notCheckable,
            UpdateProblem::refused },
        FeedOutcomeRow { "nestedTooDeep", appcast(nested(40)), {}, UpdateStatus::notCheckable, UpdateProblem::tooLarge },
        FeedOutcomeRow { "transport", std::nullopt, FetchFailure::transport("Could not resolve host"),
            UpdateStatus::notCheckable, UpdateProblem::unreachable }),
    [](const testing::TestParamInfo<FeedOutcomeRow>& row) { return std::string(row.param.name); });

TEST(UpdateCheck, FailureDetailIsKeptForLogs)
{
    FakeFetcher fetcher;
    fetcher.answer("https://example.com/a.xml", FetchFailure::http(503));
    fetcher.answer("https://example.com/b.xml", std::string("<rss><channel></rss>"));
    auto rows = UpdateCheck(fetcher, environment())
                    .run({ withFeed(bundle("A", "1.0", "1"), "https://example.com/a.xml"),
                        withFeed(bundle("B", "1.0", "1"), "https://example.com/b.xml") });
    EXPECT_EQ(rows[0].detail, "http 503");
    EXPECT_EQ(rows[1].problem, UpdateProblem::malformed);
    EXPECT_EQ(rows[1].detail.rfind("appcast: ", 0), 0u) << rows[1].detail;
}

TEST(UpdateCheck, AnUnreadableStoreReplyIsNotTakenForAbsentListings)
{
    FakeFetcher fetcher;
    auto batch = AppStoreLookup::requestURL({ "com.example.One", "com.example.Two" }, "us");
    auto deep = AppStoreLookup::requestURL({ "com.example.Three" }, "us");
    fetcher.answer(batch, std::string("<html>Service Unavailable</html>"));
    fetcher.answer(deep, std::string(R"({"results":)") + std::string(100, '[') + std::string(100, ']') + "}");
    auto rows = UpdateCheck(fetcher, environment())
                    .run({ fromStore(bundle("One", "1.0", "1")), fromStore(bundle("Two", "1.0", "1")),
                        fromStore(bundle("Three", "1.0", "1")) });
    EXPECT_EQ(rows[0].problem, UpdateProblem::malformed);
    EXPECT_EQ(rows[1].problem, UpdateProblem::malformed);
    EXPECT_EQ(rows[2].problem, UpdateProblem::tooLarge);
    EXPECT_EQ(rows[0].detail.rfind("app store: ", 0), 0u) << rows[0].detail;
}

TEST(UpdateCheck, ElectronManifestIsJudgedAgainstTheKernelRelease)
{
    FakeFetcher fetcher;
    fetcher.answer("https://example.com/new/latest-mac.yml", std::string("version: 2.1.0\nminimumSystemVersion: 20.0.0\n"));
    fetcher.answer("https://example.com/future/latest-mac.yml", std::string("version: 3.0.0\nminimumSystemVersion: 99.0.0\n"));
    fetcher.answer("https://example.com/beta/latest-mac.yml", std::string("version: 3.0.0-beta.1\n"));
    auto rows = UpdateCheck(fetcher, environment())
                    .run({ withElectron(bundle("New", "2.0.0", "2.0.0"), "https://example.com/new/latest-mac.yml"),
                        withElectron(bundle("Future", "2.0.0", ""), "https://example.com/future/latest-mac.yml"),
                        withElectron(bundle("Beta", "2.0.0", ""), "https://example.com/beta/latest-mac.yml") });
    EXPECT_EQ(rows[0].status, UpdateStatus::updateAvailable);
    EXPECT_EQ(rows[0].available, "2.1.0");
    EXPECT_EQ(rows[0].pageURL, "https://example.com/releases");
    EXPECT_EQ(rows[1].status, UpdateStatus::upToDate);
    EXPECT_EQ(rows[2].status, UpdateStatus::upToDate);
    EXPECT_EQ(fetcher.caps().front(), UpdateEnvironment::manifestCap);
}

TEST(UpdateCheck, OwnFeedWinsOverElectronAndStore)
{
    auto app = fromStore(withElectron(withFeed(bundle("A", "1", "1"), "https://example.com/a.xml"), "https://example.com/m.yml"));
    EXPECT_EQ(UpdateCheck::sourceFor(app), UpdateSource::appcast);
    app.feedURL.reset();
    EXPECT_EQ(UpdateCheck::sourceFor(app), UpdateSource::electron);
    app.electron.reset();
    EXPECT_EQ(UpdateCheck::sourceFor(app), UpdateSource::appStore);
}

TEST(UpdateCheck, StoreAppsAreAskedAboutInBatches)
{
    FakeFetcher fetcher;
    auto first = AppStoreLookup::requestURL({ "com.example.One", "com.example.Two" }, "us");
    auto second = AppStoreLookup::requestURL({ "com.example.Three" }, "us");
    fetcher.answer(first, std::string(R"({"results":[
        {"bundleId":"com.example.One","version":"2.0","kind":"mac-software","trackViewUrl":"https://apps.example.com/one","releaseNotes":"Faster."},
        {"bundleId":"com.example.Two","version":"5.0","kind":"software"}]})"));
    fetcher.answer(second, std::string(R"({"results":[
        {"bundleId":"com.example.Three","version":"3.0","kind":"mac-software","minimumOsVersion":"99.0"}]})"));
    auto rows = UpdateCheck(fetcher, environment())
                    .run({ fromStore(bundle("One", "1.0", "1")), fromStore(bundle("Two", "1.0", "1")),
                        fromStore(bundle("Three", "1.0", "1")) });
    EXPECT_EQ(fetcher.asked().size(), 2u);
    EXPECT_EQ(rows[0].status, UpdateStatus::updateAvailable);
    EXPECT_EQ(rows[0].available, "2.0");
    EXPECT_EQ(rows[0].notes, "Faster.");
    EXPECT_EQ(rows[0].pageURL, "https://apps.example.com/one");
    EXPECT_EQ(rows[1].problem, UpdateProblem::notListed); // an iPhone listing is not the Mac application
    EXPECT_EQ(rows[2].status, UpdateStatus::upToDate);    // the new version needs a newer system
}

TEST(UpdateCheck, ProgressCountsEveryAppOnceAndRowsKeepTheirOrder)
{
    FakeFetcher fetcher;
    std::vector<InstalledBundle> apps;
    for (int i = 0; i < 20; ++i) {
        auto url = "https://example.com/" + std::to_string(i) + ".xml";
        fetcher.answer(url, std::string(appcast(item("2", "2.0"))));
        apps.push_back(withFeed(bundle("App" + std::to_string(i), "1.0", "1"), url));
    }
    apps.push_back(bundle("NoSource", "1.0", "1"));
    std::vector<std::size_t> seen;
    auto rows = UpdateCheck(fetcher, environment()).run(apps, [&](std::size_t done, std::size_t total) {
        EXPECT_EQ(total, apps.size());
        seen.push_back(done);
    });
    ASSERT_EQ(rows.size(), apps.size());
    for (std::size_t i = 0; i < apps.size(); ++i)
        EXPECT_EQ(rows[i].app.name, apps[i].name);
    ASSERT_FALSE(seen.empty());
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
    EXPECT_EQ(seen.back(), apps.size());
}

} // namespace
} // namespace quillmar
