#include "platform/unsupported/UnsupportedLayoutHud.h"

namespace quillmar {

void UnsupportedLayoutHud::show(std::string_view, std::string_view) { }

} // namespace quillmar
