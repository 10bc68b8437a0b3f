#pragma once

#include <cstdint>
#include <vector>

#include "core/capture/Bitmap.h"

namespace quillmar {

// What the scroll matcher knows of one pixel row: a 64-bit hash of its pixels, and whether the row is
// flagged as useless for matching because it is one uniform colour and so would match anywhere.
struct RowSignature {
    std::uint64_t hash = 0;
    bool flagged = false;

    bool operator==(const RowSignature&) const = default;
};

// Columns left out at each side of a row of `width` pixels: a scroll-bar thumb, a hover outline or other
// narrow side content changes from frame to frame while the page itself has only scrolled.
int signatureSideBand(int width);

// One signature per row, top to bottom, over the columns between the side bands (XXH3 64-bit of the
// RGBA bytes). A row is flagged when every one of those pixels is the same.
std::vector<RowSignature> rowSignatures(const Bitmap& frame);

} // namespace quillmar
