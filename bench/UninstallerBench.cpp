#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "core/uninstaller/LeftoverSearch.h"
#include "core/uninstaller/MatchClass.h"
#include "core/uninstaller/NameTokens.h"
#include "core/uninstaller/TrashGuard.h"

namespace {

namespace fs = std::filesystem;
using namespace quillmar;

// Entry names like those of a lived-in Library: reverse-DNS names of many vendors, with and without
// the usual suffixes, and plain folder names.
std::vector<std::string> libraryNames(std::size_t count)
{
    const char* vendors[] = { "com.example", "com.acme", "org.mozilla", "com.microsoft", "com.google", "io.github" };
    const char* suffixes[] = { "", ".plist", ".savedstate", ".helper", ".binarycookies", ".ShipIt" };
    std::mt19937 random(7);
    std::vector<std::string> names;
    for (std::size_t index = 0; index < count; ++index) {
        if (index % 5 == 4) {
            names.push_back("Some Folder " + std::to_string(index));
            continue;
        }
        names.push_back(std::string(vendors[random() % 6]) + ".App" + std::to_string(random() % 500) + suffixes[random() % 6]);
    }
    return names;
}

AppIdentity editorIdentity()
{
    AppIdentity identity;
    identity.bundleID = "com.example.App42";
    identity.embeddedBundleIDs = { "com.example.App42.helper", "com.example.App42.share", "com.example.App42.sync" };
    identity.teamIdentifier = "ABCDE12345";
    identity.applicationGroups = { "ABCDE12345.com.example.shared" };
    identity.nameSequences = { { "example", "editor" }, { "app42" } };
    return identity;
}

// One classification: the inner loop of the search, per entry and identifier.
void BM_Classify(benchmark::State& state)
{
    auto names = libraryNames(1000);
    for (auto _ : state) {
        int matches = 0;
        for (const auto& name : names)
            matches += classify(name, "com.example.App42") != MatchClass::none;
        benchmark::DoNotOptimize(matches);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(names.size()));
}
BENCHMARK(BM_Classify);

// The whole verdict on one entry in a by-name folder: four identifiers, then the name words.
void BM_JudgeByNameFolder(benchmark::State& state)
{
    auto names = libraryNames(1000);
    auto identity = editorIdentity();
    const auto& support = LeftoverLocation::all()[0];
    for (auto _ : state) {
        int offered = 0;
        for (const auto& name : names)
            offered += LeftoverSearch::judge(name, support, identity).match != MatchClass::none;
        benchmark::DoNotOptimize(offered);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(names.size()));
}
BENCHMARK(BM_JudgeByNameFolder);

// The search over a Library with `range(0)` entries in each of the sixteen folders (listing included).
void BM_FindLeftovers(benchmark::State& state)
{
    auto library = fs::temp_directory_path() / ("quillmar-bench-library-" + std::to_string(state.range(0)));
    fs::remove_all(library);
    auto names = libraryNames(static_cast<std::size_t>(state.range(0)));
    for (const auto& location : LeftoverLocation::all()) {
        fs::create_directories(library / location.folder);
        for (const auto& name : names)
            std::ofstream(library / location.folder / name) << "x";
    }
    auto identity = editorIdentity();
    for (auto _ : state)
        benchmark::DoNotOptimize(LeftoverSearch::find(identity, library));
    state.SetItemsProcessed(state.iterations() * state.range(0) * 16);
    fs::remove_all(library);
}
BENCHMARK(BM_FindLeftovers)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

void BM_NameTokens(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(NameTokens::split("Visual Studio Code - Insiders Helper (Renderer) 1.92"));
}
BENCHMARK(BM_NameTokens);

// The guard on a path under a home that does not exist: the path rules and one look per component.
void BM_TrashGuard(benchmark::State& state)
{
    const fs::path home = "/nonexistent-home/someone";
    const fs::path path = "/nonexistent-home/someone/Library/Containers/com.example.App/Data/Library/Caches/x";
    for (auto _ : state)
        benchmark::DoNotOptimize(TrashGuard::isSafeToTrash(path, home));
}
BENCHMARK(BM_TrashGuard);

} // namespace
