#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "core/base/Result.h"
#include "core/hardware/helper/FanHelperRequest.h"
#include "core/hardware/helper/FanHelperResponse.h"

namespace quillmar {

// How the fan helper hears from the app (an XPC listener on macOS). Each client connection is a session.
class FanHelperTransport {
public:
    using SessionID = std::uint64_t;
    // Answers one request; the transport sends the response back on the request's session.
    using Reply = std::function<void(FanHelperResponse)>;

    struct Handlers {
        std::function<void(SessionID)> opened;
        std::function<void(SessionID)> closed;
        std::function<void(SessionID, FanHelperRequest, Reply)> request;
    };

    virtual ~FanHelperTransport() = default;

    // Starts accepting sessions from clients that satisfy `codeRequirement` (others are turned away before
    // a session opens), calling `handlers` on the main queue. An Error when it cannot listen.
    virtual Result<void> listen(const std::string& codeRequirement, Handlers handlers) = 0;

    // Stops accepting; open sessions are closed without calling `closed`.
    virtual void stop() = 0;
};

} // namespace quillmar
