#include "platform/unsupported/UnsupportedFrontApplications.h"

namespace quillmar {

std::optional<AppIdentity> UnsupportedFrontApplications::frontApplication() const
{
    return std::nullopt;
}

std::vector<AppIdentity> UnsupportedFrontApplications::takeActivations()
{
    return {};
}

} // namespace quillmar
