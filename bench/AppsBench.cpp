#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include <fmt/format.h>

#include "core/apps/AppInventory.h"
#include "core/apps/AppStoreLookup.h"
#include "core/apps/PropertyList.h"

namespace quillmar {
namespace {

std::string infoPlist(int index)
{
    return fmt::format(R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0">
<dict>
	<key>CFBundleIdentifier</key><string>org.example.app{0}</string>
	<key>CFBundleName</key><string>App {0}</string>
	<key>CFBundleShortVersionString</key><string>{1}.{2}</string>
	<key>CFBundleVersion</key><string>{0}{1}</string>
	<key>SUFeedURL</key><string>https://updates.example.com/app{0}/appcast.xml</string>
	<key>LSMinimumSystemVersion</key><string>12.0</string>
	<key>CFBundleDocumentTypes</key>
	<array><dict><key>CFBundleTypeRole</key><string>Editor</string>
	<key>LSItemContentTypes</key><array><string>public.plain-text</string><string>public.json</string></array></dict></array>
</dict>
</plist>
)",
        index, index % 7, index % 13);
}

void write(const std::filesystem::path& path, const std::string& text)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

// A tree like a well-used /Applications: 300 bundles, a third of them in sub-folders, each with a
// realistic Info.plist and some inner files and helper bundles that the scan must not enter.
const std::filesystem::path& fixtureTree()
{
    static const std::filesystem::path root = [] {
        std::random_device random;
        auto path = std::filesystem::temp_directory_path() / fmt::format("quillmar-bench-apps-{}", random());
        for (int index = 0; index < 300; ++index) {
            auto folder = index % 3 == 0 ? path / fmt::format("Suite {}", index % 10) : path;
            auto bundle = folder / fmt::format("App {}.app", index);
            write(bundle / "Contents" / "Info.plist", infoPlist(index));
            write(bundle / "Contents" / "MacOS" / fmt::format("App {}", index), "binary");
            write(bundle / "Contents" / "Resources" / "en.lproj" / "Localizable.strings", "\"a\" = \"b\";");
            write(bundle / "Contents" / "Library" / "LoginItems" / "Helper.app" / "Contents" / "Info.plist", infoPlist(index + 1000));
            if (index % 10 == 0)
                write(bundle / "Contents" / "Resources" / "app-update.yml", "provider: github\nowner: acme\nrepo: app\n");
            if (index % 4 == 0)
                write(bundle / "Contents" / "_MASReceipt" / "receipt", "receipt");
        }
        return path;
    }();
    return root;
}

struct TreeRemover {
    ~TreeRemover()
    {
        std::error_code ignored;
        if (!fixtureTree().empty())
            std::filesystem::remove_all(fixtureTree(), ignored);
    }
};

// One whole scan of the tree: the walk, 300 property lists read and parsed, the feeds, the sort.
void scanInventory(benchmark::State& state)
{
    static TreeRemover remover;
    AppInventory inventory({ fixtureTree() });
    std::size_t found = 0;
    for (auto _ : state) {
        auto bundles = inventory.scan();
        found = bundles.size();
        benchmark::DoNotOptimize(bundles.data());
    }
    state.counters["bundles"] = static_cast<double>(found);
    state.counters["bundles/s"] = benchmark::Counter(static_cast<double>(found), benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(scanInventory)->Unit(benchmark::kMillisecond);

// One Info.plist parsed, XML.
void parseInfoPlist(benchmark::State& state)
{
    auto text = infoPlist(42);
    for (auto _ : state)
        benchmark::DoNotOptimize(parsePropertyList(text));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(parseInfoPlist);

// A lookup reply for `count` applications, each result as long as a real one (release notes, screenshots).
std::string storeReply(int count)
{
    std::string results;
    for (int index = 0; index < count; ++index) {
        if (index > 0)
            results += ',';
        std::string screenshots;
        for (int shot = 0; shot < 8; ++shot)
            screenshots += fmt::format(R"({}"https://is1-ssl.example.com/image/thumb/{}/{}.png/800x500bb.jpg")", shot ? "," : "", index, shot);
        results += fmt::format(R"({{"kind":"{}","bundleId":"com.example.app{}","version":"{}.{}.{}","minimumOsVersion":"12.0",
"trackViewUrl":"https://apps.example.com/us/app/app-{}/id{}?mt=12","releaseNotes":"{}",
"currentVersionReleaseDate":"2024-03-{:02}T17:30:12Z","supportedDevices":["iPhone15-iPhone15","MacDesktop-MacDesktop"],
"screenshotUrls":[{}],"description":"{}","averageUserRating":4.5,"userRatingCount":1234,"price":0.0,"genres":["Productivity"]}})",
            index % 2 ? "software" : "mac-software", index, index % 9, index % 5, index, index, 1000000 + index,
            std::string(600, 'n'), 1 + index % 28, screenshots, std::string(2000, 'd'));
    }
    return fmt::format(R"({{"resultCount":{},"results":[{}]}})", count, results);
}

// Parsing a reply of about 2 MB (the fetch cap): 550 results.
void parseStoreReply(benchmark::State& state)
{
    auto reply = storeReply(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(AppStoreLookup::parse(reply));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(reply.size()));
    state.counters["bytes"] = static_cast<double>(reply.size());
}
BENCHMARK(parseStoreReply)->Arg(20)->Arg(550)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quillmar
