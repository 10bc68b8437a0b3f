// The X11 key path: translating keysyms and modifiers (pure), and what the main thread does for one
// listen-only key press (X11KeyListener::describe: key code, label and characters from the current keymap).
// The second needs an X server: it runs against DISPLAY and is skipped without one.

#include <benchmark/benchmark.h>

#include <xkbcommon/xkbcommon-keysyms.h>

#include <array>

#include "platform/linux/X11KeyListener.h"
#include "platform/linux/X11KeyTable.h"
#include "platform/linux/X11Session.h"

namespace quillmar {
namespace {

constexpr std::array<X11KeyTable::Keysym, 8> keysyms { XKB_KEY_a, XKB_KEY_Z, XKB_KEY_space, XKB_KEY_F5,
    XKB_KEY_KP_End, XKB_KEY_Left, XKB_KEY_bracketleft, XKB_KEY_udiaeresis };

// Keysym to virtual key code and back, and the X state to the Carbon mask and event flags: a key press's
// whole translation.
void keyTranslation(benchmark::State& state)
{
    std::size_t index = 0;
    std::uint16_t modifiers = 0;
    for (auto _ : state) {
        auto code = X11KeyTable::keyCode(keysyms[index++ % keysyms.size()]);
        auto back = code ? X11KeyTable::keysym(*code) : std::nullopt;
        auto carbon = X11KeyTable::carbonModifiers(modifiers);
        auto flags = X11KeyTable::eventFlags(modifiers);
        modifiers = static_cast<std::uint16_t>((modifiers + 5) & 0x4F);
        benchmark::DoNotOptimize(back);
        benchmark::DoNotOptimize(carbon);
        benchmark::DoNotOptimize(flags);
    }
}
BENCHMARK(keyTranslation);

// One listen-only key press as the main thread handles it, for a letter with Control and for Space.
void listenOnlyKeyEvent(benchmark::State& state)
{
    if (desktopSession() != DesktopSession::x11) {
        state.SkipWithError("needs an X server in DISPLAY");
        return;
    }
    auto connection = X11Connection::open("");
    auto keymap = connection ? X11Keymap::create(connection.value()) : Result<std::unique_ptr<X11Keymap>>(Error {});
    if (!keymap) {
        state.SkipWithError("no keymap from the X server");
        return;
    }
    std::array<X11KeyPress, 2> presses { X11KeyPress { *(*keymap)->keycode(XKB_KEY_a), 4, 0 },
        X11KeyPress { *(*keymap)->keycode(XKB_KEY_space), 0, 0 } };
    std::size_t index = 0;
    for (auto _ : state) {
        auto report = X11KeyListener::describe(**keymap, presses[index++ % presses.size()]);
        benchmark::DoNotOptimize(report);
    }
}
BENCHMARK(listenOnlyKeyEvent);

} // namespace
} // namespace quillmar
