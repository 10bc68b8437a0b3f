#include "cli/FetcherOptions.h"

#include <fmt/format.h>

#include "core/base/Files.h"

namespace quillmar::cli {

void FetcherOptions::addTo(CLI::App& command)
{
    command.add_option("--resolve", resolve, "Reach HOST:PORT at ADDRESS instead of looking it up (repeatable)");
    command.add_option("--cacert", caFile, "A PEM file of certificates to trust besides the system's");
}

std::unique_ptr<SafeFetcher> FetcherOptions::makeFetcher(CliContext& context) const
{
    SafeFetcher::Options options;
    options.fixedAddresses = resolve;
    if (!caFile.empty()) {
        auto contents = readFile(caFile);
        if (!contents.ok() || !contents->has_value()) {
            context.refuse(fmt::format("The certificate file \"{}\" could not be read.", caFile));
            return nullptr;
        }
        options.extraTrustAnchors = std::move(**contents);
    }
    auto fetcher = SafeFetcher::create(std::move(options));
    if (!fetcher.ok()) {
        if (fetcher.error().code == "net.address")
            context.usageError(fetcher.error().message);
        else
            context.refuse(fetcher.error().message);
        return nullptr;
    }
    return std::move(*fetcher);
}

} // namespace quillmar::cli
