#include "core/agents/ResponseKey.h"

#include <xxhash.h>

namespace quillmar {

ResponseKey ResponseKey::of(std::string_view identity)
{
    auto hash = XXH3_128bits(identity.data(), identity.size());
    return { hash.high64, hash.low64 };
}

} // namespace quillmar
