#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "core/clipboard/ClipHistory.h"
#include "core/clipboard/ClipHistoryFile.h"
#include "core/snippets/SnippetMatcher.h"

namespace quillmar {
namespace {

ClipItem textItem(int index)
{
    ClipItem item;
    item.id = "id-" + std::to_string(index);
    item.text = "copied text number " + std::to_string(index) + " with a few more words in it";
    item.date = WallTime(std::chrono::seconds(1'700'000'000 + index));
    return item;
}

std::vector<ClipItem> history(int size)
{
    std::vector<ClipItem> items;
    for (int index = size - 1; index >= 0; --index)
        items.push_back(textItem(index));
    return items;
}

// One copy of something already in the history (the oldest item, the worst place for it): the index
// finds it and it moves to the top.
void repeatedCopy(benchmark::State& state)
{
    ClipHistory clips;
    clips.replaceAll(history(static_cast<int>(state.range(0))));
    int next = 0;
    for (auto _ : state) {
        auto copy = clips.items().back();
        copy.id = "copy-" + std::to_string(next++);
        benchmark::DoNotOptimize(clips.insert(std::move(copy)));
    }
}
BENCHMARK(repeatedCopy)->Arg(200)->Arg(1000)->Arg(10000);

// One new copy at a full history: inserted on top, then the oldest unpinned item trimmed.
void newCopyAndTrim(benchmark::State& state)
{
    auto size = state.range(0);
    ClipHistory clips;
    clips.replaceAll(history(static_cast<int>(size)));
    int next = static_cast<int>(size);
    for (auto _ : state) {
        clips.insert(textItem(next++));
        benchmark::DoNotOptimize(clips.trim(size));
    }
}
BENCHMARK(newCopyAndTrim)->Arg(200)->Arg(1000)->Arg(10000);

// Reading "history.json" at start-up.
void decodeHistory(benchmark::State& state)
{
    auto text = ClipHistoryFile::encode(history(static_cast<int>(state.range(0))));
    for (auto _ : state)
        benchmark::DoNotOptimize(ClipHistoryFile::decode(text));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(decodeHistory)->Arg(200)->Arg(1000);

// Matching a full 64-character buffer after a key press, against N snippets that do not fire.
void matchBuffer(benchmark::State& state)
{
    std::vector<TextSnippet> snippets;
    for (int index = 0; index < state.range(0); ++index) {
        TextSnippet snippet;
        snippet.id = std::to_string(index);
        snippet.trigger = ";snippet" + std::to_string(index);
        snippet.expandsImmediately = index % 2 == 0;
        snippet.ignoresCase = index % 3 == 0;
        snippets.push_back(std::move(snippet));
    }
    std::u32string buffer(63, U'a');
    buffer += U' ';
    for (auto _ : state)
        benchmark::DoNotOptimize(SnippetMatcher::match(std::u32string_view(buffer), snippets));
}
BENCHMARK(matchBuffer)->Arg(10)->Arg(100)->Arg(1000);

} // namespace
} // namespace quillmar
