#include "cli/StitchCommand.h"

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "core/base/Diagnostics.h"
#include "core/base/Files.h"
#include "core/capture/PngCodec.h"
#include "core/capture/ProfileHintProvider.h"
#include "core/capture/ScrollStitcher.h"

namespace quillmar::cli {

namespace {

struct StitchOptions {
    std::string output;
    std::vector<std::string> frames;
    bool json = false;
};

// The frame at `path`; its Error's message is the sentence a person reads, naming the file.
Result<Bitmap> readFrame(const std::string& path)
{
    auto bytes = readFile(path);
    if (!bytes)
        return Error { bytes.error().code, fmt::format("Couldn't read {}.", path), bytes.error().context };
    if (!*bytes)
        return Error { "stitch.missing", fmt::format("Couldn't read {}: no such file.", path), path };
    auto frame = decodePng(**bytes);
    if (!frame)
        return Error { frame.error().code, fmt::format("Couldn't read {}: it isn't a readable PNG image.", path),
            frame.error().context };
    return frame;
}

void stitch(CliContext& context, const StitchOptions& options)
{
    ProfileHintProvider hints;
    ScrollStitcher stitcher(&hints);
    std::vector<int> statuses;
    for (const auto& path : options.frames) {
        auto frame = readFrame(path);
        if (!frame) {
            diagnostic("stitch: frame {} unreadable: {} {}", path, frame.error().code, frame.error().context);
            context.err() << frame.error().message << '\n';
        }
        statuses.push_back(static_cast<int>(stitcher.process(std::move(frame))));
    }

    auto image = stitcher.compose();
    if (!image) {
        context.refuse(image.error().message);
        return;
    }
    auto encoded = encodePng(*image);
    auto written = encoded ? writeFileAtomically(options.output, *encoded) : Result<void>(encoded.error());
    if (!written) {
        context.refuse(fmt::format("The stitched image could not be written to {}.", options.output));
        return;
    }

    if (options.json) {
        context.printJson({ { "statuses", statuses }, { "width", image->width() }, { "height", image->height() } });
        return;
    }
    for (std::size_t i = 0; i < statuses.size(); ++i)
        context.out() << fmt::format("{} {}\n", statuses[i], options.frames[i]);
    context.out() << fmt::format("{}x{}\n", image->width(), image->height());
}

} // namespace

void addStitchCommand(CLI::App& app, CliContext& context)
{
    auto options = std::make_shared<StitchOptions>();
    auto* command = app.add_subcommand("stitch",
        "Stitch PNG frames of a scrolled page into one tall PNG; prints each frame's status "
        "(0 started, 1 skipped, 2 appended, 3 lost, 4 full) and the final size");
    command->add_option("-o,--output", options->output, "The tall PNG to write")->required();
    command->add_option("FRAME", options->frames, "The frames, in the order they were captured")->required();
    command->add_flag("--json", options->json, "Print one JSON object");
    command->callback([&context, options] { stitch(context, *options); });
}

} // namespace quillmar::cli
