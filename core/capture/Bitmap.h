#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/base/Result.h"
#include "core/capture/RowRange.h"

namespace quillmar {

// One captured frame: 8-bit RGBA pixels (4 bytes each, in that order), rows top to bottom, each row
// `bytesPerRow` bytes long (at least 4 × width; the rest is padding).
class Bitmap final {
public:
    static constexpr int bytesPerPixel = 4;
    // Larger sides are refused: no screen is that big, and the stitched image stops near 40,000 rows.
    static constexpr int maximumSide = 1 << 17;

    // Takes `pixels` as they are. Refuses an empty size, a side above `maximumSide`, rows shorter than
    // the width, or fewer bytes than height × bytesPerRow.
    static Result<Bitmap> create(int width, int height, int bytesPerRow, std::vector<std::uint8_t> pixels);

    // A tightly packed bitmap of the given size, every pixel set to `rgba` (0xRRGGBBAA).
    static Result<Bitmap> filled(int width, int height, std::uint32_t rgba);

    int width() const { return m_width; }
    int height() const { return m_height; }
    int bytesPerRow() const { return m_bytesPerRow; }
    std::size_t rowBytes() const { return static_cast<std::size_t>(m_width) * bytesPerPixel; }

    // The first byte of row `y` (0 ≤ y < height).
    const std::uint8_t* row(int y) const { return m_pixels.data() + offset(y); }
    std::uint8_t* row(int y) { return m_pixels.data() + offset(y); }

    // A tightly packed copy of `rows`, which must lie inside the bitmap and not be empty.
    Bitmap image(RowRange rows) const;

    // Same size and the same visible pixels (padding is ignored).
    bool samePixels(const Bitmap& other) const;

private:
    Bitmap(int width, int height, int bytesPerRow, std::vector<std::uint8_t> pixels);
    std::size_t offset(int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_bytesPerRow);
    }

    int m_width;
    int m_height;
    int m_bytesPerRow;
    std::vector<std::uint8_t> m_pixels;
};

} // namespace quillmar
