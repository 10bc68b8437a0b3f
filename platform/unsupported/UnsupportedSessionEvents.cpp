#include "platform/unsupported/UnsupportedSessionEvents.h"

namespace quillmar {

void UnsupportedSessionEvents::startObserving(std::function<void(SessionEvent)>) { }

void UnsupportedSessionEvents::stopObserving() { }

} // namespace quillmar
