#include "platform/unsupported/UnsupportedFanHelperClient.h"

namespace quillmar {

std::string UnsupportedFanHelperClient::bundledVersion() const
{
    return "unsupported";
}

Result<void> UnsupportedFanHelperClient::registerHelper()
{
    return Error { "fans.helperUnsupported", "Fan speeds can't be changed on this system.", {} };
}

void UnsupportedFanHelperClient::send(const FanHelperRequest&, FanReplyOnce reply)
{
    reply(std::nullopt);
}

} // namespace quillmar
