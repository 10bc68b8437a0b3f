#include "core/apps/SystemAppsPorts.h"
#include "platform/null/NullAppsPorts.h"

namespace quillmar {

SystemAppsPorts makeSystemAppsPorts()
{
    return { std::make_unique<NullKernelRelease>() };
}

} // namespace quillmar
