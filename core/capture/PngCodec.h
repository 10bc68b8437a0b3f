#pragma once

#include <string>
#include <string_view>

#include "core/base/Result.h"
#include "core/capture/Bitmap.h"

namespace quillmar {

// Frames larger than this many pixels are refused before any pixel memory is taken (256 MB of RGBA).
inline constexpr long long maximumPngPixels = 64LL * 1024 * 1024;

// Reads a PNG file's bytes into an RGBA bitmap: palette, grey and 16-bit images are converted, a missing
// alpha channel becomes opaque. Any malformed, truncated or oversized input is an Error, never a crash.
Result<Bitmap> decodePng(std::string_view bytes);

// The bytes of an 8-bit RGBA PNG of `bitmap`.
Result<std::string> encodePng(const Bitmap& bitmap);

} // namespace quillmar
