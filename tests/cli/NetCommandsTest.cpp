#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <sys/wait.h>

#include "core/base/Files.h"
#include "tests/cli/CliHarness.h"
#include "tests/net/support/LocalConnectProxy.h"
#include "tests/net/support/LocalHttpsServer.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

using testing_support::HttpsRoute;
using testing_support::LocalConnectProxy;
using testing_support::LocalHttpsServer;

// Which addresses are allowed is the address policy's own test; here, that its verdict is printed.
TEST(UrlCheckCommand, PrintsTheVerdict)
{
    TemporaryFolder folder;
    struct Row {
        const char* url;
        const char* out;
    };
    for (const auto& row : {
             Row { "https://example.com/appcast.xml", "allowed\n" },
             Row { "http://example.com/appcast.xml", "refused\n" },
         }) {
        auto run = runQuillmar(folder.path(), { "url", "check", row.url });
        EXPECT_EQ(run.code, 0) << row.url;
        EXPECT_EQ(run.out, row.out) << row.url;
        EXPECT_EQ(run.err, "") << row.url;
    }
}

TEST(UrlCheckCommand, JsonAndBatch)
{
    TemporaryFolder folder;
    auto json = runQuillmar(folder.path(), { "url", "check", "https://a.example.com/", "--json" });
    EXPECT_EQ(json.out, "{\"allowed\":true,\"url\":\"https://a.example.com/\"}\n");
    auto batch = runQuillmar(folder.path(), { "url", "check", "--batch" },
        "https://example.com/\nhttps://user@example.com/\n\nhttps://example.com/#x\r\nhttps://feeds.example.org/a.yml");
    EXPECT_EQ(batch.code, 0);
    EXPECT_EQ(batch.out, "allowed\nrefused\nrefused\nrefused\nallowed\n");
    auto missing = runQuillmar(folder.path(), { "url", "check" });
    EXPECT_EQ(missing.code, 2);
    EXPECT_NE(missing.err.find("Give an address"), std::string::npos);
}

class FetchCommandTest : public testing::Test {
protected:
    void SetUp() override
    {
        auto started = LocalHttpsServer::start();
        ASSERT_TRUE(started.ok());
        m_server = std::move(started).value();
        ASSERT_TRUE(writeFileAtomically(caFile(), m_server->caPem()).ok());
    }

    std::string caFile() const { return (m_folder.path() / "ca.pem").string(); }

    CommandRun fetch(const std::string& path, std::vector<std::string> extra = {})
    {
        std::vector<std::string> words { "fetch", m_server->url("feeds.example.com", path), "--resolve",
            m_server->resolveEntry("feeds.example.com"), "--cacert", caFile() };
        words.insert(words.end(), extra.begin(), extra.end());
        return runQuillmar(m_folder.path(), words);
    }

    TemporaryFolder m_folder;
    std::unique_ptr<LocalHttpsServer> m_server;
};

// Each failure's description is the fetcher's own test; here, that the body or the failure is printed.
TEST_F(FetchCommandTest, PrintsTheBodyOrTheFailure)
{
    m_server->route("/feed", HttpsRoute::ok("<rss version=\"2.0\"/>"));
    m_server->route("/missing", HttpsRoute::withStatus(404));
    m_server->route("/big", HttpsRoute::ok(std::string(11, 'x')));
    struct Row {
        const char* path;
        std::vector<std::string> extra;
        int code;
        const char* out;
        const char* err;
    };
    for (const auto& row : {
             Row { "/feed", {}, 0, "<rss version=\"2.0\"/>", "" },
             Row { "/big", { "--cap", "11" }, 0, "xxxxxxxxxxx", "" },
             Row { "/big", { "--cap", "10" }, 1, "", "tooLarge\n" },
             Row { "/missing", {}, 1, "", "notFound\n" },
         }) {
        auto run = fetch(row.path, row.extra);
        EXPECT_EQ(run.code, row.code) << row.path;
        EXPECT_EQ(run.out, row.out) << row.path;
        EXPECT_EQ(run.err, row.err) << row.path;
    }
}

TEST_F(FetchCommandTest, RefusesBeforeAnyTraffic)
{
    auto run = runQuillmar(m_folder.path(), { "fetch", m_server->url("127.0.0.1", "/feed"), "--cacert", caFile() });
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, "blocked\n");
    EXPECT_EQ(m_server->connectionCount(), 0u);
}

TEST_F(FetchCommandTest, WithoutTheAuthorityTheCertificateIsRefused)
{
    m_server->route("/feed", HttpsRoute::ok("x"));
    auto run = runQuillmar(m_folder.path(), { "fetch", m_server->url("feeds.example.com", "/feed"), "--resolve",
        m_server->resolveEntry("feeds.example.com") });
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find("certificate"), std::string::npos) << run.err;
}

TEST_F(FetchCommandTest, BadOptions)
{
    auto missingFile = runQuillmar(m_folder.path(), { "fetch", "https://feeds.example.com/", "--cacert",
        (m_folder.path() / "nothing.pem").string() });
    EXPECT_EQ(missingFile.code, 1);
    EXPECT_EQ(missingFile.err, "The certificate file \"" + (m_folder.path() / "nothing.pem").string() + "\" could not be read.\n");
    auto badMapping = runQuillmar(m_folder.path(), { "fetch", "https://feeds.example.com/", "--resolve", "feeds.example.com" });
    EXPECT_EQ(badMapping.code, 2);
    EXPECT_EQ(badMapping.err, "The address mapping \"feeds.example.com\" is not HOST:PORT:ADDRESS.\n");
    auto negativeCap = runQuillmar(m_folder.path(), { "fetch", "https://feeds.example.com/", "--cap", "-1" });
    EXPECT_EQ(negativeCap.code, 2);
    EXPECT_EQ(m_server->connectionCount(), 0u);
}

// The real binary writes the body to a pipe byte for byte, NULs and all.
TEST_F(FetchCommandTest, BinaryWritesBinaryBodies)
{
    std::string bytes;
    for (int round = 0; round < 3; ++round) {
        for (int value = 0; value < 256; ++value)
            bytes += static_cast<char>(value);
    }
    m_server->route("/blob", HttpsRoute::ok(bytes));
    auto binary = runQuillmarBinary(m_folder.path(), { "fetch", m_server->url("feeds.example.com", "/blob"), "--resolve",
                                                       m_server->resolveEntry("feeds.example.com"), "--cacert", caFile() });
    EXPECT_EQ(binary.code, 0) << binary.err;
    EXPECT_EQ(binary.out, bytes);
}

// Behind a company proxy: the real binary, with the proxy in its environment as the user's shell sets it.
TEST_F(FetchCommandTest, FetchesThroughTheProxyOfTheEnvironment)
{
    auto proxy = LocalConnectProxy::start(m_server->port());
    ASSERT_TRUE(proxy.ok());
    m_server->route("/feed", HttpsRoute::ok("<rss version=\"2.0\"/>"));
    auto command = "env -u HTTPS_PROXY -u all_proxy -u ALL_PROXY -u no_proxy -u NO_PROXY https_proxy='"
        + (*proxy)->url() + "' XDG_CONFIG_HOME='" + (m_folder.path() / "config").string() + "' XDG_DATA_HOME='"
        + (m_folder.path() / "data").string() + "' " + QUILLMAR_BINARY + " fetch '"
        + m_server->url("feeds.example.com", "/feed") + "' --cacert '" + caFile() + "' 2>&1";
    std::FILE* pipe = popen(command.c_str(), "r");
    ASSERT_TRUE(pipe);
    std::string output;
    char buffer[4096];
    while (auto count = std::fread(buffer, 1, sizeof buffer, pipe))
        output.append(buffer, count);
    EXPECT_EQ(WEXITSTATUS(pclose(pipe)), 0);
    EXPECT_EQ(output, "<rss version=\"2.0\"/>");
    EXPECT_EQ((*proxy)->tunnels(), std::vector<std::string> { "feeds.example.com:" + std::to_string(m_server->port()) });
}

} // namespace
} // namespace quillmar
