#include "platform/unsupported/UnsupportedRunningApplications.h"

namespace quillmar {

std::vector<AppSnapshot> UnsupportedRunningApplications::applications() const
{
    return {};
}

std::optional<std::int32_t> UnsupportedRunningApplications::frontmostProcess() const
{
    return std::nullopt;
}

bool UnsupportedRunningApplications::activate(std::int32_t, std::optional<std::uint32_t>)
{
    return false;
}

} // namespace quillmar
