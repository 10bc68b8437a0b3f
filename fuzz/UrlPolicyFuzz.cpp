#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "core/net/SafeFetcher.h"
#include "core/net/Url.h"

// Addresses come from outside: feed declarations in application bundles, Electron configurations and every
// redirect's Location header. Any bytes must parse to a URL or nothing and be judged by the policy without a
// crash; the first line is also read as a Location against the address given by the rest.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view text(reinterpret_cast<const char*>(data), size);
    bool allowed = quillmar::SafeFetcher::isAllowed(text);
    auto url = quillmar::Url::parse(text);
    if (allowed != (url && quillmar::SafeFetcher::isAllowed(*url)))
        std::abort();
    if (allowed && (url->scheme() != "https" || url->host().empty() || url->user() || url->fragment()))
        std::abort();
    if (url) {
        // A URL parsed from its own normalised text stays the same URL.
        auto again = quillmar::Url::parse(url->text());
        if (!again || !(*again == *url))
            std::abort();
    }

    auto lineEnd = text.find('\n');
    if (lineEnd != std::string_view::npos) {
        auto base = quillmar::Url::parse(text.substr(lineEnd + 1));
        if (base) {
            auto target = base->resolved(text.substr(0, lineEnd));
            if (target)
                (void)quillmar::SafeFetcher::isAllowed(*target);
        }
    }
    return 0;
}
