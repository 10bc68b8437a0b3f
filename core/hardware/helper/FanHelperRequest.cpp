#include "core/hardware/helper/FanHelperRequest.h"

#include <array>

namespace quillmar {

namespace {

constexpr std::array<std::string_view, 4> rawValues { "apply", "heartbeat", "restore", "status" };

} // namespace

std::string_view FanHelperRequest::rawValue(Kind kind)
{
    return rawValues[static_cast<std::size_t>(kind)];
}

std::optional<FanHelperRequest::Kind> FanHelperRequest::kindFromRawValue(std::string_view raw)
{
    for (std::size_t index = 0; index < rawValues.size(); ++index) {
        if (rawValues[index] == raw)
            return static_cast<Kind>(index);
    }
    return std::nullopt;
}

} // namespace quillmar
