#include "core/runtime/MainQueue.h"

#include <cstdio>
#include <cstdlib>

namespace quillmar {

void MainQueue::assertMainThread(std::string_view who) const
{
    if (isMainThread())
        return;
    std::fprintf(stderr, "quillmar: %.*s used off the main thread\n", static_cast<int>(who.size()), who.data());
    std::abort();
}

} // namespace quillmar
