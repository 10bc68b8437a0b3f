#include "cli/WindowsCommand.h"

#include <charconv>
#include <cmath>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "core/windows/WindowLayout.h"

namespace quillmar::cli {

namespace {

struct LayoutOptions {
    std::string name;
    std::string area;
    std::string current;
    double gap = 0;
    bool json = false;
};

std::optional<double> number(std::string_view text)
{
    double value = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

// "X,Y,W,H": four finite numbers, the width and the height not negative.
std::optional<Rect> rectangle(std::string_view text)
{
    double parts[4] {};
    for (std::size_t index = 0; index < 4; ++index) {
        auto comma = index < 3 ? text.find(',') : std::string_view::npos;
        if (index < 3 && comma == std::string_view::npos)
            return std::nullopt;
        auto value = number(text.substr(0, comma));
        if (!value)
            return std::nullopt;
        parts[index] = *value;
        text = index < 3 ? text.substr(comma + 1) : std::string_view();
    }
    if (parts[2] < 0 || parts[3] < 0)
        return std::nullopt;
    return Rect { parts[0], parts[1], parts[2], parts[3] };
}

std::string layoutNames()
{
    std::string names;
    for (auto layout : allWindowLayouts())
        names += (names.empty() ? "" : ", ") + std::string(rawValue(layout));
    return names;
}

// The shortest text that reads back as the same number: 485, 0.1, 396.6666666666667.
std::string text(double value)
{
    return fmt::format("{}", value == 0 ? 0.0 : value);
}

void printLayout(CliContext& context, const LayoutOptions& options)
{
    auto layout = windowLayoutFromRawValue(options.name);
    if (!layout) {
        context.usageError(fmt::format("There is no layout called \"{}\"; the layouts are {}.", options.name, layoutNames()));
        return;
    }
    auto area = rectangle(options.area);
    if (!area) {
        context.usageError("The area must be four numbers X,Y,WIDTH,HEIGHT, with a width and height of 0 or more.");
        return;
    }
    auto current = options.current.empty() ? area : rectangle(options.current);
    if (!current) {
        context.usageError("The current frame must be four numbers X,Y,WIDTH,HEIGHT, with a width and height of 0 or more.");
        return;
    }
    if (!(options.gap >= 0) || !std::isfinite(options.gap)) {
        context.usageError("The gap must be a number of points, 0 or more.");
        return;
    }

    Rect frame = layoutFrame(*layout, *area, *current, options.gap);
    if (options.json) {
        context.printJson({ { "x", frame.x }, { "y", frame.y }, { "width", frame.width }, { "height", frame.height } });
        return;
    }
    context.out() << text(frame.x) << ' ' << text(frame.y) << ' ' << text(frame.width) << ' ' << text(frame.height)
                  << '\n';
}

} // namespace

void addWindowsCommand(CLI::App& app, CliContext& context)
{
    auto options = std::make_shared<LayoutOptions>();
    auto* command = app.add_subcommand("layout",
        "Print the frame of a window layout within an area, as x y width height (bottom-left origin, y up)");
    command->add_option("NAME", options->name, "The layout: " + layoutNames())->required();
    command->add_option("--area", options->area, "The screen's visible frame: X,Y,WIDTH,HEIGHT")->required();
    command->add_option("--current", options->current,
        "The window's present frame, X,Y,WIDTH,HEIGHT (only its size matters, for center); the area by default");
    command->add_option("--gap", options->gap, "Points kept between windows and around the area's edge (default 0)");
    command->add_flag("--json", options->json, "Print one JSON object");
    command->callback([&context, options] { printLayout(context, *options); });
}

} // namespace quillmar::cli
