#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "core/net/SafeFetcher.h"
#include "core/net/Url.h"

// The address policy runs on every declared feed of every installed application and on every redirect.

namespace {

const std::vector<std::string>& addresses()
{
    static const std::vector<std::string> list {
        "https://feeds.example.com/appcast.xml",
        "https://downloads.example.net/releases/latest/download/latest-mac.yml?channel=stable",
        "http://example.com/appcast.xml",
        "https://192.168.1.10/a",
        "https://user@example.com/",
        "https://very-long-subdomain-name.with.many.labels.example.org/path/to/a/feed.xml",
    };
    return list;
}

void isAllowed(benchmark::State& state)
{
    const auto& list = addresses();
    for (auto _ : state) {
        for (const auto& address : list)
            benchmark::DoNotOptimize(quillmar::SafeFetcher::isAllowed(address));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(list.size()));
}
BENCHMARK(isAllowed);

void resolveLocation(benchmark::State& state)
{
    auto base = quillmar::Url::parse("https://feeds.example.com/apps/tool/appcast.xml");
    for (auto _ : state)
        benchmark::DoNotOptimize(base->resolved("../other/appcast.xml?x=1"));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(resolveLocation);

} // namespace
