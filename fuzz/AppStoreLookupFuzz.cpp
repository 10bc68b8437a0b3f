#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/apps/AppStoreLookup.h"

// The store's lookup reply, as fetched from the network.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    auto listings = quillmar::AppStoreLookup::parse(std::string_view(reinterpret_cast<const char*>(data), size));
    if (!listings)
        return 0;
    for (const auto& listing : *listings)
        (void)listing.bundleID.size();
    return 0;
}
