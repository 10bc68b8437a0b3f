#include "cli/VersionCommand.h"

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "cli/BatchRunner.h"
#include "core/versions/AppVersion.h"
#include "core/versions/CatalogVersion.h"

namespace quillmar::cli {

namespace {

using Fields = std::vector<std::string_view>;

// One `quillmar version` command: how many strings it takes and what it prints for them.
struct VersionQuestion {
    const char* name;
    const char* help;
    const char* fieldsHelp;
    std::size_t fieldCount;
    const char* usage; // the sentence for a wrong number of arguments
    std::function<std::string(const Fields&)> answer;
};

const char* truth(bool value)
{
    return value ? "true" : "false";
}

std::vector<VersionQuestion> questions()
{
    return {
        { "compare", "Compare two application versions; prints <, = or >", "A B", 2,
            "Give two versions, for example: quillmar version compare 1.9 1.10",
            [](const Fields& fields) {
                auto order = AppVersion::compare(fields[0], fields[1]);
                return std::string(order < 0 ? "<" : order > 0 ? ">" : "=");
            } },
        { "verdict", "Judge a package catalogue's version against the installed one; prints update, current or uncomparable",
            "CATALOG SHORT BUILD", 3,
            "Give the catalogue version, the installed short version and build, for example: quillmar version verdict 5.0-1300 5.0 1234",
            [](const Fields& fields) { return std::string(rawValue(CatalogVersion::verdict(fields[0], fields[1], fields[2]))); } },
        { "placeholder", "Whether an installed short version and build carry no real information; prints true or false",
            "SHORT BUILD", 2, "Give the short version and the build, for example: quillmar version placeholder 1.0 1",
            [](const Fields& fields) { return std::string(truth(AppVersion::isPlaceholder(fields[0], fields[1]))); } },
        { "stable", "Whether a version is a plain dotted number without a pre-release marker; prints true or false", "V", 1,
            "Give one version, for example: quillmar version stable 1.2.3",
            [](const Fields& fields) { return std::string(truth(AppVersion::isStableNumeric(fields[0]))); } },
    };
}

// A batch line's fields: split at every tab, empty fields kept (they are empty versions).
Fields tabFields(std::string_view line)
{
    Fields fields;
    while (true) {
        auto tab = line.find('\t');
        fields.push_back(line.substr(0, tab));
        if (tab == std::string_view::npos)
            return fields;
        line.remove_prefix(tab + 1);
    }
}

struct VersionOptions {
    std::vector<std::string> values;
    bool batch = false;
};

void run(CliContext& context, const VersionQuestion& question, const VersionOptions& options)
{
    if (options.batch) {
        if (!options.values.empty()) {
            context.usageError("With --batch the versions come from standard input, one line each, separated by tabs.");
            return;
        }
        runBatch(context.in(), context.out(), [&question](std::string_view line) {
            auto fields = tabFields(line);
            if (fields.size() != question.fieldCount)
                return fmt::format("error: expected {} tab-separated field{}, got {}", question.fieldCount,
                    question.fieldCount == 1 ? "" : "s", fields.size());
            return question.answer(fields);
        });
        return;
    }
    if (options.values.size() != question.fieldCount) {
        context.usageError(question.usage);
        return;
    }
    context.out() << question.answer(Fields(options.values.begin(), options.values.end())) << '\n';
}

} // namespace

void addVersionCommand(CLI::App& app, CliContext& context)
{
    auto* version = app.add_subcommand("version", "Compare application versions and judge catalogue versions");
    version->require_subcommand(1);
    for (auto& question : questions()) {
        auto shared = std::make_shared<VersionQuestion>(std::move(question));
        auto options = std::make_shared<VersionOptions>();
        auto* command = version->add_subcommand(shared->name, shared->help);
        command->add_option("VERSIONS", options->values,
            fmt::format("{}; an empty argument (\"\") is an empty version", shared->fieldsHelp));
        command->add_flag("--batch", options->batch,
            "Read one question per line from standard input, fields separated by tabs; print one answer line each");
        command->callback([&context, shared, options] { run(context, *shared, *options); });
    }
}

} // namespace quillmar::cli
