#include "core/clipboard/ImageHash.h"

#include <fmt/format.h>
#include <xxhash.h>

namespace quillmar {

std::string imageHash(std::string_view data)
{
    return fmt::format("{:016x}", static_cast<unsigned long long>(XXH3_64bits(data.data(), data.size())));
}

} // namespace quillmar
