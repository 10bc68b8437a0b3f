#include "platform/unsupported/UnsupportedAppRecency.h"

namespace quillmar {

void UnsupportedAppRecency::claim(std::string_view, WarmPreviews) { }

void UnsupportedAppRecency::release(std::string_view) { }

std::vector<std::int32_t> UnsupportedAppRecency::recentPIDs() const
{
    return {};
}

} // namespace quillmar
