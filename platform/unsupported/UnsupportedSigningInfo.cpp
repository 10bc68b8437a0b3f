#include "platform/unsupported/UnsupportedSigningInfo.h"

namespace quillmar {

SigningDetails UnsupportedSigningInfo::details(const std::filesystem::path&)
{
    return {};
}

} // namespace quillmar
