#include "core/hardware/helper/FanHelperRequest.h"

#include "core/base/RawValueTable.h"

namespace quillmar {

namespace {

constexpr auto kinds = rawValueTable<FanHelperRequest::Kind>({
    { FanHelperRequest::Kind::apply, "apply" },
    { FanHelperRequest::Kind::heartbeat, "heartbeat" },
    { FanHelperRequest::Kind::restore, "restore" },
    { FanHelperRequest::Kind::status, "status" },
});

} // namespace

std::string_view FanHelperRequest::rawValue(Kind kind)
{
    return kinds.rawValue(kind);
}

std::optional<FanHelperRequest::Kind> FanHelperRequest::kindFromRawValue(std::string_view raw)
{
    return kinds.fromRawValue(raw);
}

} // namespace quillmar
