#include "core/hardware/fans/Fan.h"

#include <algorithm>

namespace quillmar {

double Fan::target(int level) const
{
    return minimum + (maximum - minimum) * std::clamp(level, 0, 100) / 100.0;
}

} // namespace quillmar
