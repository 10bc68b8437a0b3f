#pragma once

#include <optional>
#include <string_view>

#include "core/base/Result.h"

namespace quillmar {

// Why fan control failed, with the codes the helper and the app exchange.
enum class FanFailure : int {
    noFans = 0,
    untrustedLimits = 1,
    controlledElsewhere = 2,
    wouldNotSwitch = 3,
    didNotHold = 4,
};

// The sentence a user reads ("The fans didn't hold the speed").
std::string_view text(FanFailure failure);

// The Error carrying `failure`: code "fans.<name>", the sentence as message, `context` for diagnostics.
Error fanError(FanFailure failure, std::string context = {});

// The failure an Error made by fanError carries; none for any other Error.
std::optional<FanFailure> fanFailure(const Error& error);

} // namespace quillmar
