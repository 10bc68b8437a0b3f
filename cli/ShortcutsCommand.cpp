#include "cli/ShortcutsCommand.h"

#include <algorithm>
#include <memory>
#include <ostream>

#include <fmt/format.h>

namespace quillmar::cli {

namespace {

// Characters, not bytes: the modifier symbols take three bytes each in UTF-8.
std::string padded(std::string text, std::size_t width)
{
    auto characters = static_cast<std::size_t>(std::count_if(text.begin(), text.end(),
        [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
    if (characters < width)
        text.append(width - characters, ' ');
    return text;
}

void listShortcuts(CliContext& context, bool json)
{
    auto& services = context.services();
    auto registered = services.hotKeyList();
    auto wouldRegister = [&registered](ShortcutAction action) {
        return std::any_of(registered.begin(), registered.end(), [action](const auto& pair) { return pair.first == action; });
    };

    nlohmann::json rows = nlohmann::json::array();
    for (auto action : allShortcutActions()) {
        auto owner = feature(action);
        auto shortcut = services.shortcuts().shortcut(action);
        if (json) {
            rows.push_back({ { "id", rawValue(action) }, { "title", title(action) },
                { "feature", owner ? nlohmann::json(rawValue(*owner)) : nlohmann::json() },
                { "display", shortcut ? nlohmann::json(shortcut->display()) : nlohmann::json() },
                { "registered", wouldRegister(action) } });
            continue;
        }
        context.out() << fmt::format("{:<16} {:<15} {} {:<14} {}\n", rawValue(action), owner ? rawValue(*owner) : "-",
            padded(shortcut ? shortcut->display() : "none", 6), wouldRegister(action) ? "registered" : "not registered",
            title(action));
    }
    if (json)
        context.printJson({ { "shortcuts", std::move(rows) } });
}

} // namespace

void addShortcutsCommand(CLI::App& app, CliContext& context)
{
    auto* shortcuts = app.add_subcommand("shortcuts", "List the global shortcuts");
    shortcuts->require_subcommand(1);
    auto* list = shortcuts->add_subcommand("list", "Every action with its shortcut and whether it is registered now");
    auto json = std::make_shared<bool>(false);
    list->add_flag("--json", *json, "Print one JSON object");
    list->callback([&context, json] { listShortcuts(context, *json); });
}

} // namespace quillmar::cli
