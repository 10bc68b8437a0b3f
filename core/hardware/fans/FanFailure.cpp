#include "core/hardware/fans/FanFailure.h"

#include <array>
#include <string>

namespace quillmar {

namespace {

struct FailureRow {
    FanFailure failure;
    std::string_view code;
    std::string_view text;
};

constexpr std::array rows {
    FailureRow { FanFailure::noFans, "fans.noFans", "This Mac has no fans to control" },
    FailureRow { FanFailure::untrustedLimits, "fans.untrustedLimits", "The fans reported limits Quillmar doesn't trust" },
    FailureRow { FanFailure::controlledElsewhere, "fans.controlledElsewhere", "Another app is controlling the fans" },
    FailureRow { FanFailure::wouldNotSwitch, "fans.wouldNotSwitch", "The fans wouldn't switch to manual" },
    FailureRow { FanFailure::didNotHold, "fans.didNotHold", "The fans didn't hold the speed" },
};

const FailureRow& rowOf(FanFailure failure)
{
    return rows[static_cast<std::size_t>(failure)];
}

} // namespace

std::string_view text(FanFailure failure)
{
    return rowOf(failure).text;
}

Error fanError(FanFailure failure, std::string context)
{
    const auto& row = rowOf(failure);
    return Error { std::string(row.code), std::string(row.text), std::move(context) };
}

std::optional<FanFailure> fanFailure(const Error& error)
{
    for (const auto& row : rows) {
        if (row.code == error.code)
            return row.failure;
    }
    return std::nullopt;
}

} // namespace quillmar
