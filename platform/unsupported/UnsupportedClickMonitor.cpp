#include "platform/unsupported/UnsupportedClickMonitor.h"

namespace quillmar {

bool UnsupportedClickMonitor::start(std::function<void()>)
{
    return false;
}

void UnsupportedClickMonitor::stop() { }

} // namespace quillmar
