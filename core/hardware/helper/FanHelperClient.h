#pragma once

#include <string>

#include "core/base/Result.h"
#include "core/hardware/helper/FanHelperRequest.h"
#include "core/hardware/helper/FanReplyOnce.h"

namespace quillmar {

// The app's way to the fan helper: installing it with the system's service manager and talking to it
// (XPC on macOS).
class FanHelperClient {
public:
    virtual ~FanHelperClient() = default;

    // The version of the helper that ships with this app.
    virtual std::string bundledVersion() const = 0;

    // Installs the helper, or registers it again so that the system runs the bundled version. An Error
    // (a sentence a user may read) when it cannot.
    virtual Result<void> registerHelper() = 0;

    // Sends `request`. `reply` is delivered exactly once, on any thread: with the response, or with none
    // when the helper cannot be reached.
    virtual void send(const FanHelperRequest& request, FanReplyOnce reply) = 0;
};

} // namespace quillmar
