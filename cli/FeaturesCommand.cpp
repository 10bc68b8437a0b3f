#include "cli/FeaturesCommand.h"

#include <memory>
#include <ostream>
#include <string>

#include <fmt/format.h>

namespace quillmar::cli {

namespace {

void listFeatures(CliContext& context, bool json)
{
    auto enabled = context.services().features().enabled();
    if (json) {
        nlohmann::json features = nlohmann::json::array();
        for (auto feature : allFeatures()) {
            features.push_back({ { "id", rawValue(feature) }, { "title", title(feature) },
                { "category", rawValue(category(feature)) }, { "enabled", enabled.contains(feature) } });
        }
        context.printJson({ { "features", std::move(features) } });
        return;
    }
    for (auto feature : allFeatures()) {
        context.out() << fmt::format("{:<20} {:<3} {:<10} {}\n", rawValue(feature),
            enabled.contains(feature) ? "on" : "off", rawValue(category(feature)), title(feature));
    }
}

void switchFeature(CliContext& context, const std::string& id, bool on)
{
    auto feature = featureFromRawValue(id);
    if (!feature) {
        context.usageError(fmt::format(
            "There is no feature \"{}\"; run \"quillmar features list\" to see the valid ones.", id));
        return;
    }
    context.services().features().set(*feature, on);
    if (!context.confirmSaved())
        return;
    context.out() << fmt::format("{} is {}.\n", title(*feature), on ? "on" : "off");
}

} // namespace

void addFeaturesCommand(CLI::App& app, CliContext& context)
{
    auto* features = app.add_subcommand("features", "List the features and switch them on or off");
    features->require_subcommand(1);

    auto* list = features->add_subcommand("list", "Every feature with its category and whether it is on");
    auto json = std::make_shared<bool>(false);
    list->add_flag("--json", *json, "Print one JSON object");
    list->callback([&context, json] { listFeatures(context, *json); });

    for (bool on : { true, false }) {
        auto* command = features->add_subcommand(on ? "enable" : "disable",
            on ? "Switch a feature on" : "Switch a feature off");
        auto id = std::make_shared<std::string>();
        command->add_option("ID", *id, "The feature's id, as \"features list\" shows it")->required();
        command->callback([&context, id, on] { switchFeature(context, *id, on); });
    }
}

} // namespace quillmar::cli
