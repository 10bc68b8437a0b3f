#include "cli/NetCommands.h"

#include <cstddef>
#include <memory>
#include <ostream>
#include <string>
#include <vector>


#include "cli/BatchRunner.h"
#include "cli/FetcherOptions.h"
#include "core/net/SafeFetcher.h"

namespace quillmar::cli {

namespace {

// The most bytes `quillmar fetch` reads unless told otherwise: the cap of appcasts and store lookups.
constexpr std::size_t defaultCap = 2'000'000;

const char* verdict(std::string_view url)
{
    return SafeFetcher::isAllowed(url) ? "allowed" : "refused";
}

void addUrlCommand(CLI::App& app, CliContext& context)
{
    auto* url = app.add_subcommand("url", "The address policy for outside data");
    url->require_subcommand(1);

    struct Arguments {
        std::string url;
        bool batch = false;
        bool json = false;
    };
    auto arguments = std::make_shared<Arguments>();
    auto* check = url->add_subcommand("check", "Print whether URL may be fetched: allowed or refused");
    auto* given = check->add_option("URL", arguments->url, "The address");
    check->add_flag("--batch", arguments->batch, "Judge one address per line of standard input");
    check->add_flag("--json", arguments->json, "Print one JSON object");
    check->callback([&context, arguments, given] {
        if (arguments->batch) {
            runBatch(context.in(), context.out(), [](std::string_view line) { return std::string(verdict(line)); });
            return;
        }
        if (given->count() == 0) {
            context.usageError("Give an address, for example: quillmar url check https://example.com/appcast.xml");
            return;
        }
        if (arguments->json) {
            context.printJson({ { "url", arguments->url }, { "allowed", SafeFetcher::isAllowed(arguments->url) } });
            return;
        }
        context.out() << verdict(arguments->url) << '\n';
    });
}

void addFetchCommand(CLI::App& app, CliContext& context)
{
    struct Arguments {
        std::string url;
        std::size_t cap = defaultCap;
        FetcherOptions fetcher;
    };
    auto arguments = std::make_shared<Arguments>();
    auto* fetch = app.add_subcommand("fetch", "Print the body of URL, fetched as the update checker fetches");
    fetch->add_option("URL", arguments->url, "An https address that the address policy allows")->required();
    fetch->add_option("--cap", arguments->cap, "The most bytes the body may have (2000000)")->check(CLI::NonNegativeNumber);
    arguments->fetcher.addTo(*fetch);
    fetch->callback([&context, arguments] {
        auto fetcher = arguments->fetcher.makeFetcher(context);
        if (!fetcher)
            return;
        auto result = fetcher->fetch(arguments->url, arguments->cap);
        if (!result.ok()) {
            context.refuse(result.failure().description());
            return;
        }
        const auto& body = result.body();
        context.out().write(body.data(), static_cast<std::streamsize>(body.size()));
        context.out().flush();
    });
}

} // namespace

void addNetCommands(CLI::App& app, CliContext& context)
{
    addUrlCommand(app, context);
    addFetchCommand(app, context);
}

} // namespace quillmar::cli
