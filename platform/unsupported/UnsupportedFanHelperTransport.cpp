#include "platform/unsupported/UnsupportedFanHelperTransport.h"

namespace quillmar {

Result<void> UnsupportedFanHelperTransport::listen(const std::string&, Handlers)
{
    return Error { "fans.helperUnsupported", "The fan helper can't run on this system.", {} };
}

void UnsupportedFanHelperTransport::stop()
{
    // Nothing listens, so there is nothing to stop.
}

} // namespace quillmar
