#include <benchmark/benchmark.h>

#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "core/appcast/Appcast.h"
#include "core/versions/AppVersion.h"
#include "core/versions/CatalogVersion.h"

namespace quillmar {
namespace {

// Pairs an update check meets: marketing versions, builds, pre-releases, date-like builds.
constexpr std::array<std::pair<std::string_view, std::string_view>, 10> typicalPairs { {
    { "1.10", "1.9" }, { "2.0", "2.0.0" }, { "14.4.1", "14.5" }, { "1.0b2", "1.0b10" }, { "1.0rc1", "1.0" },
    { "v3.2.1", "3.2.1" }, { "2024.05.17", "2024.06.01" }, { "12345", "12346" }, { "5.0.3 (5034)", "5.0.3" },
    { "7.1-beta3", "7.1-beta12" },
} };

void compareTypical(benchmark::State& state)
{
    for (auto _ : state) {
        for (const auto& [a, b] : typicalPairs)
            benchmark::DoNotOptimize(AppVersion::compare(a, b));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(typicalPairs.size()));
}
BENCHMARK(compareTypical);

// Many parts, long digit strings and words that differ only at the end: the work grows with the text.
void compareLong(benchmark::State& state)
{
    std::string a;
    std::string b;
    for (int part = 0; part < 50; ++part) {
        a += "1234567890123456789012345678901234567890beta.";
        b += "1234567890123456789012345678901234567890beta.";
    }
    a += "1";
    b += "2";
    for (auto _ : state)
        benchmark::DoNotOptimize(AppVersion::compare(a, b));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(a.size() + b.size()));
}
BENCHMARK(compareLong);

void compareNonAscii(benchmark::State& state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(AppVersion::compare("1.0-\u00e9t\u00e92", "1.0-\u00c9T\u00c910"));
        benchmark::DoNotOptimize(AppVersion::compare("\u0661.\u0662", "\u0661.\u0663"));
    }
    state.SetItemsProcessed(state.iterations() * 2);
}
BENCHMARK(compareNonAscii);

void catalogVerdicts(benchmark::State& state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(CatalogVersion::verdict("5.0-1300", "5.0", "1234"));
        benchmark::DoNotOptimize(CatalogVersion::verdict("3.4.1.2207", "3.4.1", "2207"));
        benchmark::DoNotOptimize(CatalogVersion::verdict("2.1,210", "2.0", "200"));
    }
    state.SetItemsProcessed(state.iterations() * 3);
}
BENCHMARK(catalogVerdicts);

// The largest feed accepted: 4,000 items of the usual shape, about 2.3 MB.
std::string largeFeed()
{
    std::string document = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<rss version=\"2.0\" "
                           "xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/sparkle\">\n<channel>\n"
                           "<title>Example</title>\n";
    for (int index = 0; index < 4000; ++index) {
        auto number = std::to_string(index);
        document += "<item>\n<title>Version 1." + number + "</title>\n<pubDate>Tue, 05 Mar 2024 10:15:00 +0100</pubDate>\n"
            "<sparkle:minimumSystemVersion>12.0</sparkle:minimumSystemVersion>\n"
            "<description><![CDATA[<ul><li>Fixes and improvements in this release.</li><li>Faster start-up.</li></ul>]]></description>\n"
            "<enclosure url=\"https://example.com/downloads/App-1." + number + ".zip\" sparkle:version=\"" + number
            + "\" sparkle:shortVersionString=\"1." + number + "\" length=\"12345678\" type=\"application/octet-stream\" "
            "sparkle:edSignature=\"AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA==\"/>\n"
            "</item>\n";
    }
    return document + "</channel>\n</rss>\n";
}

void parseLargeAppcast(benchmark::State& state)
{
    auto document = largeFeed();
    for (auto _ : state) {
        auto items = Appcast::parse(document);
        benchmark::DoNotOptimize(items);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(document.size()));
    state.SetItemsProcessed(state.iterations() * 4000);
}
BENCHMARK(parseLargeAppcast)->Unit(benchmark::kMillisecond);

void bestOfLargeAppcast(benchmark::State& state)
{
    auto items = *Appcast::parse(largeFeed());
    for (auto _ : state)
        benchmark::DoNotOptimize(Appcast::bestUpdate(items, "100", "1.100", { 14, 4, 1 }, "arm64"));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(items.size()));
}
BENCHMARK(bestOfLargeAppcast)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quillmar
