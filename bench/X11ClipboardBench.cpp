// The CLIPBOARD selection read from another client (a second connection owning it), the way the history reads
// it: 1 MB of text (in pieces, INCR) and a 10 MB PNG, and the change count when nothing changed, which the
// history asks twice a second. Runs against DISPLAY and is skipped without one.

#include <benchmark/benchmark.h>

#include <random>

#include <fmt/format.h>

#include "core/clipboard/PasteboardSnapshot.h"
#include "platform/linux/X11Pasteboard.h"
#include "platform/linux/X11Session.h"

namespace quillmar {
namespace {

std::unique_ptr<X11Pasteboard> open()
{
    // Xvfb turns a connection away now and then when clients come and go quickly: a few tries.
    for (int attempt = 0; attempt < 5; ++attempt) {
        auto connection = X11Connection::open("");
        if (!connection)
            continue;
        auto pasteboard = X11Pasteboard::create(std::move(connection).value(), {});
        if (pasteboard)
            return std::move(pasteboard).value();
        fmt::print(stderr, "{}\n", pasteboard.error().context);
    }
    return nullptr;
}

// An owner on a connection of its own and a reader, or an error set on `state`.
struct Clients {
    std::unique_ptr<X11Pasteboard> owner;
    std::unique_ptr<X11Pasteboard> reader;
};

Clients clients(benchmark::State& state, const PasteboardWriting& writing)
{
    if (desktopSession() != DesktopSession::x11) {
        state.SkipWithError("needs an X server in DISPLAY");
        return {};
    }
    Clients both { open(), open() };
    if (!both.owner || !both.reader) {
        state.SkipWithError("no connection to the X server");
        return {};
    }
    auto seen = both.reader->changeCount();
    if (!both.owner->write(writing) || !both.reader->awaitChange(seen, std::chrono::seconds(2))) {
        state.SkipWithError("the X server refused the clipboard");
        return {};
    }
    return both;
}

std::string randomBytes(std::size_t size, std::string prefix)
{
    std::mt19937 random(11);
    while (prefix.size() < size)
        prefix += static_cast<char>('a' + random() % 26);
    return prefix;
}

void readText1MB(benchmark::State& state)
{
    auto text = randomBytes(std::size_t { 1 } << 20, "");
    auto both = clients(state, { text, {}, std::nullopt, {}, std::nullopt });
    if (!both.reader)
        return;
    for (auto _ : state) {
        auto reading = both.reader->read();
        if (reading.strings[std::string(PasteboardTypes::text[0])].size() != text.size())
            state.SkipWithError("the text was not read whole");
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(readText1MB)->Unit(benchmark::kMillisecond)->UseRealTime();

void readImage10MB(benchmark::State& state)
{
    auto png = randomBytes(std::size_t { 10 } << 20, std::string("\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR\0\0\x10\0\0\0\x10\0", 24));
    auto both = clients(state, { std::nullopt, {}, PasteboardImage { png, "public.png", {} }, {}, std::nullopt });
    if (!both.reader)
        return;
    for (auto _ : state) {
        auto reading = both.reader->read();
        if (!reading.image || reading.image->data.size() != png.size())
            state.SkipWithError("the image was not read whole");
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(png.size()));
}
BENCHMARK(readImage10MB)->Unit(benchmark::kMillisecond)->UseRealTime();

void changeCountUnchanged(benchmark::State& state)
{
    auto both = clients(state, { "x", {}, std::nullopt, {}, std::nullopt });
    if (!both.reader)
        return;
    for (auto _ : state)
        benchmark::DoNotOptimize(both.reader->changeCount());
}
BENCHMARK(changeCountUnchanged);

} // namespace
} // namespace quillmar
