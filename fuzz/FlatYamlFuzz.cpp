#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/apps/ElectronFeed.h"

// "app-update.yml" comes from an installed application, "latest-mac.yml" from the network.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view text(reinterpret_cast<const char*>(data), size);
    (void)quillmar::ElectronFeed::scalars(text);
    if (auto config = quillmar::ElectronFeed::config(text))
        (void)config->manifestURL.text();
    if (auto manifest = quillmar::ElectronFeed::manifest(text))
        (void)quillmar::ElectronFeed::isOffered(*manifest, "24.1.0");
    return 0;
}
