// The command bar ranks on every keystroke: 10,000 candidates of the kinds a desktop offers (application
// names, file names, window titles, menu items, clipboard text, 5 to 60 characters, some accented),
// ranked with a learning book for queries of 1, 3, 6 and 12 characters. Steady state: the candidate list
// stays the same between keystrokes, so its folding is done once, before timing.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "core/commandbar/CommandRanker.h"

namespace quillmar {
namespace {

const WallTime now = WallTime(std::chrono::seconds(1'700'000'000));

const std::vector<std::string> appWords { "Calendar", "Mail", "Maps", "Notes", "Photos", "Preview", "Terminal", "Music",
    "Podcasts", "Reminders", "Contacts", "Calculator", "Activity Monitor", "Disk Utility", "Font Book", "Image Capture",
    "Keychain Access", "Script Editor", "Screenshot", "Text Edit", "Stickies", "Clock", "Weather", "Books", "News", "Home",
    "Voice Memos", "Colour Picker", "Pixel", "Studio", "Code", "Forge", "Draft", "Board", "Sketch", "Budget", "Planner",
    "Mind", "Garden", "Tab", "Keeper", "Grid", "Resize", "Archive", "Utility", "Player", "Reader", "Writer", "Capture",
    "Tracker", "Journal", "Atlas", "Mixer", "Lens", "Vault" };
const std::vector<std::string> fileWords { "quarterly", "report", "budget", "review", "meeting", "notes", "invoice",
    "project", "proposal", "draft", "final", "r\u00E9sum\u00E9", "caf\u00E9", "menu", "\u00FCber", "stra\u00DFe",
    "\u00C5ngstr\u00F6m", "na\u00EFve", "se\u00F1or", "photo", "scan", "contract", "agenda", "roadmap", "design",
    "minutes", "summary", "holiday", "receipt", "expenses", "travel", "plan", "slides", "backup", "export", "data",
    "presentation", "tax", "letter", "\u00E9t\u00E9", "garten", "fa\u00E7ade", "m\u00FCnchen", "z\u00FCrich" };
const std::vector<std::string> extensions { ".pdf", ".docx", ".txt", ".md", ".png", ".jpg", ".xlsx", ".key", ".cpp",
    ".json", ".csv", ".zip" };
const std::vector<std::string> separators { " ", "-", "_", " " };
const std::vector<std::string> menuNames { "File", "Edit", "View", "Window", "Help", "Format", "Insert", "Tools" };
const std::vector<std::string> menuItems { "Save", "Save As\u2026", "Open Recent", "Close Window", "Print\u2026",
    "Show Sidebar", "Zoom In", "Zoom Out", "Find\u2026", "Replace\u2026", "Duplicate", "Export as PDF\u2026",
    "Enter Full Screen", "Minimise", "Bring All to Front", "Paste and Match Style", "Select All", "Undo", "Redo" };

class Generator {
public:
    std::string pick(const std::vector<std::string>& words) { return words[index(words.size())]; }
    std::size_t index(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(m_random); }
    int number(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_random); }

    std::string appName()
    {
        auto name = pick(appWords);
        if (number(0, 2) == 0)
            name += " " + pick(appWords);
        return name;
    }

    std::string fileName()
    {
        std::string name = pick(fileWords);
        int words = number(0, 4);
        for (int word = 0; word < words; ++word)
            name += pick(separators) + pick(fileWords);
        if (number(0, 2) == 0)
            name += fmt::format(" {}-{:02}", number(2019, 2025), number(1, 12));
        return name + pick(extensions);
    }

    std::string windowTitle() { return fileName() + " \u2014 " + appName(); }
    std::string menuItem() { return pick(menuNames) + " \u203A " + pick(menuItems); }

    std::string clip()
    {
        std::string text = number(0, 3) == 0 ? "https://example.org/" : "";
        int words = number(1, 7);
        for (int word = 0; word < words; ++word)
            text += (word ? " " : "") + pick(fileWords);
        return text;
    }

private:
    std::mt19937 m_random { 20240611 };
};

// A title of 5 to 60 characters (counted in bytes here, which only shortens accented ones).
std::string fitted(std::string title)
{
    if (title.size() < 5)
        title += " notes";
    if (title.size() > 60) {
        title.resize(60);
        // Never cut a UTF-8 sequence in two.
        while (!title.empty() && (static_cast<unsigned char>(title.back()) & 0xC0) == 0x80)
            title.pop_back();
        if (!title.empty() && static_cast<unsigned char>(title.back()) >= 0xC0)
            title.pop_back();
    }
    return title;
}

struct Fixture {
    CommandCandidateList candidates;
    std::shared_ptr<const CommandLearning> book;
};

const Fixture& fixture()
{
    static const Fixture made = [] {
        Generator generator;
        std::vector<CommandCandidate> list;
        const std::array<std::pair<CommandSource, int>, 8> mix { { { CommandSource::apps, 300 },
            { CommandSource::settings, 100 }, { CommandSource::windows, 400 }, { CommandSource::menus, 800 },
            { CommandSource::files, 7000 }, { CommandSource::clipboard, 900 }, { CommandSource::snippets, 200 },
            { CommandSource::actions, 300 } } };
        for (auto [source, count] : mix) {
            for (int index = 0; index < count; ++index) {
                CommandCandidate candidate;
                candidate.id = fmt::format("{}:{}", rawValue(source), index);
                candidate.source = source;
                switch (source) {
                case CommandSource::apps:
                case CommandSource::actions:
                    candidate.title = generator.appName();
                    break;
                case CommandSource::settings:
                    candidate.title = generator.appName();
                    candidate.keywords = { generator.pick(fileWords), generator.pick(fileWords) };
                    break;
                case CommandSource::windows:
                    candidate.title = generator.windowTitle();
                    break;
                case CommandSource::menus:
                    candidate.title = generator.menuItem();
                    break;
                case CommandSource::files:
                    candidate.title = generator.fileName();
                    candidate.date = now - std::chrono::hours(generator.number(1, 24 * 60));
                    break;
                default:
                    candidate.title = generator.clip();
                    break;
                }
                candidate.title = fitted(std::move(candidate.title));
                list.push_back(std::move(candidate));
            }
        }
        // A book after some weeks of use: 300 picked ids and the habits of the queries that found them.
        auto book = std::make_shared<CommandLearning>();
        book->secret.fill(9);
        for (int pick = 0; pick < 600; ++pick) {
            const auto& chosen = list[generator.index(list.size())];
            auto query = chosen.title.substr(0, static_cast<std::size_t>(generator.number(1, 4)));
            book->record(chosen.id, query, now - std::chrono::hours(generator.number(1, 24 * 30)));
        }
        return Fixture { makeCandidateList(std::move(list)), std::move(book) };
    }();
    return made;
}

const char* queryOfLength(std::int64_t length)
{
    switch (length) {
    case 1:
        return "m";
    case 3:
        return "rep";
    case 6:
        return "budget";
    default:
        return "invoice 2024";
    }
}

// One keystroke: the whole ranking of the unchanged list for a query of the given length.
void rankKeystroke(benchmark::State& state)
{
    const auto& data = fixture();
    CommandRanker ranker;
    CommandRanker::Input input;
    input.candidates = data.candidates;
    input.frecency = data.book;
    input.now = now;
    input.query = queryOfLength(state.range(0));
    (void)ranker.rank(input); // prepares the list, as the first keystroke after opening the bar does
    std::size_t results = 0;
    for (auto _ : state) {
        auto sections = ranker.rank(input);
        results = 0;
        for (const auto& section : sections)
            results += section.results.size();
        benchmark::DoNotOptimize(sections);
    }
    state.counters["results"] = static_cast<double>(results);
}
BENCHMARK(rankKeystroke)->Arg(1)->Arg(3)->Arg(6)->Arg(12)->Unit(benchmark::kMicrosecond);

// Typing "invoice 2024" one character at a time: twelve rankings per iteration.
void typeQuery(benchmark::State& state)
{
    const auto& data = fixture();
    CommandRanker ranker;
    CommandRanker::Input input;
    input.candidates = data.candidates;
    input.frecency = data.book;
    input.now = now;
    (void)ranker.rank(input);
    const std::string typed = "invoice 2024";
    for (auto _ : state) {
        for (std::size_t length = 1; length <= typed.size(); ++length) {
            input.query = typed.substr(0, length);
            benchmark::DoNotOptimize(ranker.rank(input));
        }
    }
}
BENCHMARK(typeQuery)->Unit(benchmark::kMillisecond);

// A new candidate list: folding and cutting every title and keyword once, then the first keystroke.
void prepareList(benchmark::State& state)
{
    const auto& data = fixture();
    CommandRanker::Input input;
    input.frecency = data.book;
    input.now = now;
    input.query = "m";
    for (auto _ : state) {
        state.PauseTiming();
        input.candidates = makeCandidateList(*data.candidates);
        state.ResumeTiming();
        CommandRanker ranker;
        benchmark::DoNotOptimize(ranker.rank(input));
    }
}
BENCHMARK(prepareList)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quillmar
