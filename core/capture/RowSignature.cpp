#include "core/capture/RowSignature.h"

#include <algorithm>
#include <cstring>

#include <xxhash.h>

namespace quillmar {

int signatureSideBand(int width)
{
    // 1/16 of the width, at most 48 pixels: wide enough for a scroll bar at 2x, narrow enough to keep
    // nearly all of the page's content.
    return std::min(width / 16, 48);
}

std::vector<RowSignature> rowSignatures(const Bitmap& frame)
{
    int band = signatureSideBand(frame.width());
    auto offset = static_cast<std::size_t>(band) * Bitmap::bytesPerPixel;
    auto length = static_cast<std::size_t>(frame.width() - 2 * band) * Bitmap::bytesPerPixel;
    std::vector<RowSignature> signatures(static_cast<std::size_t>(frame.height()));
    for (int y = 0; y < frame.height(); ++y) {
        const std::uint8_t* bytes = frame.row(y) + offset;
        auto& signature = signatures[static_cast<std::size_t>(y)];
        signature.hash = XXH3_64bits(bytes, length);
        // Every pixel equals its right neighbour exactly when the row shifted by one pixel is unchanged.
        signature.flagged = std::memcmp(bytes, bytes + Bitmap::bytesPerPixel, length - Bitmap::bytesPerPixel) == 0;
    }
    return signatures;
}

} // namespace quillmar
