#include "core/commandbar/SystemCommandBarPorts.h"
#include "platform/null/NullCommandBarPorts.h"

namespace quillmar {

SystemCommandBarPorts makeSystemCommandBarPorts()
{
    return { std::make_unique<NullRandomSource>() };
}

} // namespace quillmar
