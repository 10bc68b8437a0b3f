#include "platform/unsupported/UnsupportedPasteboard.h"

namespace quillmar {

std::int64_t UnsupportedPasteboard::changeCount() const
{
    return 0;
}

PasteboardReading UnsupportedPasteboard::read()
{
    return {};
}

bool UnsupportedPasteboard::write(const PasteboardWriting&)
{
    return false;
}

void UnsupportedPasteboard::clear() { }

} // namespace quillmar
