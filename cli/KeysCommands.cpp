#include "cli/KeysCommands.h"

#include <poll.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <xkbcommon/xkbcommon.h>

#include <memory>
#include <optional>
#include <ostream>
#include <thread>

#include <fmt/format.h>

#include "core/base/Text.h"
#include "core/hotkeys/Shortcut.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/X11HotKeyRegistrar.h"
#include "platform/linux/X11KeyListener.h"
#include "platform/linux/X11KeyTable.h"

namespace quillmar::cli {

namespace {

// SIGINT and SIGTERM stop the main loop instead of the process, so that grabs are released and output
// flushed. Handlers rather than a blocked mask: a signal goes to any thread that does not block it, and
// libraries may have started threads before. The handler only writes to an eventfd that a thread watches.
class StopSignals final {
public:
    explicit StopSignals(EventLoop& loop)
    {
        s_signalled = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
        m_wake = FileDescriptor(::eventfd(0, EFD_CLOEXEC));
        struct sigaction action {};
        action.sa_handler = [](int) {
            std::uint64_t one = 1;
            [[maybe_unused]] auto written = ::write(s_signalled, &one, sizeof one);
        };
        sigemptyset(&action.sa_mask);
        ::sigaction(SIGINT, &action, &m_previousInterrupt);
        ::sigaction(SIGTERM, &action, &m_previousTerminate);
        m_thread = std::thread([this, &loop] {
            pollfd descriptors[2] { { s_signalled, POLLIN, 0 }, { m_wake.get(), POLLIN, 0 } };
            while (::poll(descriptors, 2, -1) < 0) { }
            if (descriptors[0].revents & POLLIN)
                loop.post([&loop] { loop.stop(); });
        });
    }

    ~StopSignals()
    {
        std::uint64_t one = 1;
        [[maybe_unused]] auto written = ::write(m_wake.get(), &one, sizeof one);
        m_thread.join();
        ::sigaction(SIGINT, &m_previousInterrupt, nullptr);
        ::sigaction(SIGTERM, &m_previousTerminate, nullptr);
        ::close(s_signalled);
        s_signalled = -1;
    }

    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;

private:
    static inline int s_signalled = -1;
    struct sigaction m_previousInterrupt {};
    struct sigaction m_previousTerminate {};
    FileDescriptor m_wake;
    std::thread m_thread;
};

struct ModifierWord {
    std::string_view word;
    std::uint32_t mask;
};

constexpr ModifierWord modifierWords[] = {
    { "ctrl", Shortcut::controlMask }, { "control", Shortcut::controlMask }, { "alt", Shortcut::optionMask },
    { "option", Shortcut::optionMask }, { "opt", Shortcut::optionMask }, { "shift", Shortcut::shiftMask },
    { "super", Shortcut::commandMask }, { "cmd", Shortcut::commandMask }, { "command", Shortcut::commandMask },
    { "⌃", Shortcut::controlMask }, { "⌥", Shortcut::optionMask }, { "⇧", Shortcut::shiftMask },
    { "⌘", Shortcut::commandMask },
};

// The key of a shortcut's key part: a label as `display` writes it ("Space", "↩", "F5", "V") or an X key
// name ("space", "Return", "left").
std::optional<std::uint32_t> keyFromText(std::string_view text)
{
    for (std::uint32_t code = 0; code < 0x80; ++code) {
        auto symbol = X11KeyTable::keysym(code);
        if (!symbol || X11KeyTable::isModifierKey(code))
            continue;
        char buffer[16];
        auto size = xkb_keysym_to_utf8(*symbol, buffer, sizeof buffer);
        auto label = Shortcut::label(code, size > 1 ? std::string_view(buffer, static_cast<std::size_t>(size - 1)) : "");
        if (!label.empty() && label == Shortcut::label(0xFFFF, text))
            return code;
        if (label == text)
            return code;
    }
    std::string name(text);
    auto symbol = xkb_keysym_from_name(name.c_str(), XKB_KEYSYM_CASE_INSENSITIVE);
    return symbol == XKB_KEY_NoSymbol ? std::nullopt : X11KeyTable::keyCode(symbol);
}

// "⌃⌥Space" (the form shortcuts are shown in) or "ctrl+alt+space".
std::optional<Shortcut> parseShortcut(std::string_view text)
{
    std::uint32_t modifiers = 0;
    for (;;) {
        bool matched = false;
        for (auto [word, mask] : modifierWords) {
            auto isSymbol = static_cast<unsigned char>(word.front()) >= 0x80;
            auto lowered = asciiLower(text.substr(0, word.size()));
            if (lowered != word || text.size() == word.size())
                continue;
            auto rest = text.substr(word.size());
            if (!isSymbol && rest.front() != '+')
                continue;
            text = isSymbol ? rest : rest.substr(1);
            modifiers |= mask;
            matched = true;
            break;
        }
        if (!matched)
            break;
    }
    auto code = keyFromText(text);
    if (!code)
        return std::nullopt;
    char buffer[16];
    auto size = xkb_keysym_to_utf8(*X11KeyTable::keysym(*code), buffer, sizeof buffer);
    auto label = Shortcut::label(*code, size > 1 ? std::string_view(buffer, static_cast<std::size_t>(size - 1)) : "");
    return Shortcut { *code, modifiers, label };
}

void listen(CliContext& context, int count, bool json)
{
    if (count < 0)
        return context.usageError("The count has to be a positive number.");
    auto connection = X11Connection::shared("Key events");
    if (!connection)
        return context.refuse(connection.error().message);
    auto& loop = context.eventLoop();
    StopSignals signals(loop);
    int printed = 0;
    auto listener = X11KeyListener::create(std::move(connection).value(), loop, [&](const KeyReport& report) {
        if (report.isModifierKey)
            return;
        auto display = Shortcut { report.keyCode.value_or(0), report.modifiers, report.label }.display();
        if (json) {
            nlohmann::ordered_json line;
            line["keyCode"] = report.keyCode ? nlohmann::ordered_json(*report.keyCode) : nlohmann::ordered_json();
            line["modifiers"] = report.modifiers;
            line["label"] = report.label;
            line["display"] = display;
            line["characters"] = report.characters;
            context.printJson(line);
        } else {
            context.out() << fmt::format("{:<6} {:<12} {}\n", report.keyCode ? fmt::format("{}", *report.keyCode) : "-",
                display, jsonText(nlohmann::json(report.characters)));
        }
        context.out().flush();
        if (count > 0 && ++printed == count)
            loop.stop();
    });
    if (!listener)
        return context.refuse(listener.error().message);
    context.err() << "Listening to key presses; Ctrl+C stops.\n";
    context.err().flush();
    loop.run();
}

void testHotKey(CliContext& context, const std::string& text)
{
    auto shortcut = parseShortcut(text);
    if (!shortcut)
        return context.usageError(fmt::format("\"{}\" isn't a shortcut; write it like ⌃⌥Space or ctrl+alt+space.", text));
    auto& loop = context.eventLoop();
    StopSignals signals(loop);
    auto registrar = X11HotKeyRegistrar::create();
    if (!registrar)
        return context.refuse(registrar.error().message);
    auto display = shortcut->display();
    (*registrar)->setPressedHandler([&loop, &context, display](HotKeyID) {
        loop.post([&context, display] {
            context.out() << display << " pressed\n";
            context.out().flush();
        });
    });
    if (!(*registrar)->registerHotKey(shortcut->keyCode, shortcut->modifiers, { 0, 1 }))
        return context.refuse(fmt::format("{} can't be used: {}", display, (*registrar)->lastRefusal()));
    context.err() << fmt::format("Press {}; Ctrl+C stops.\n", display);
    context.err().flush();
    loop.run();
}

} // namespace

void addKeysCommands(CLI::App& app, CliContext& context)
{
    auto* keys = app.add_subcommand("keys", "Watch the keyboard");
    keys->require_subcommand(1);
    auto* listenCommand = keys->add_subcommand("listen", "Print each key press as Quillmar sees it, taking none away");
    auto count = std::make_shared<int>(0);
    auto json = std::make_shared<bool>(false);
    listenCommand->add_option("--count", *count, "Stop after this many presses");
    listenCommand->add_flag("--json", *json, "One JSON object per press");
    listenCommand->callback([&context, count, json] { listen(context, *count, *json); });

    auto* hotkey = app.add_subcommand("hotkey", "Try a global shortcut");
    hotkey->require_subcommand(1);
    auto* test = hotkey->add_subcommand("test", "Grab one shortcut and print each press until interrupted");
    auto shortcut = std::make_shared<std::string>();
    test->add_option("SHORTCUT", *shortcut, "As shown (⌃⌥Space) or written out (ctrl+alt+space)")->required();
    test->callback([&context, shortcut] { testHotKey(context, *shortcut); });
}

} // namespace quillmar::cli
