#include "core/capture/Bitmap.h"

#include <cassert>
#include <cstring>

#include <fmt/format.h>

namespace quillmar {

Bitmap::Bitmap(int width, int height, int bytesPerRow, std::vector<std::uint8_t> pixels)
    : m_width(width)
    , m_height(height)
    , m_bytesPerRow(bytesPerRow)
    , m_pixels(std::move(pixels))
{
}

Result<Bitmap> Bitmap::create(int width, int height, int bytesPerRow, std::vector<std::uint8_t> pixels)
{
    auto size = fmt::format("{}x{}", width, height);
    if (width <= 0 || height <= 0)
        return Error { "bitmap.empty", "The image is empty.", size };
    if (width > maximumSide || height > maximumSide)
        return Error { "bitmap.tooLarge", "The image is too large.", size };
    if (bytesPerRow < width * bytesPerPixel)
        return Error { "bitmap.shortRows", "The image's rows are too short.", fmt::format("{} at {}", size, bytesPerRow) };
    if (pixels.size() / static_cast<std::size_t>(bytesPerRow) < static_cast<std::size_t>(height))
        return Error { "bitmap.truncated", "The image's pixels are incomplete.", size };
    return Bitmap(width, height, bytesPerRow, std::move(pixels));
}

Result<Bitmap> Bitmap::filled(int width, int height, std::uint32_t rgba)
{
    if (width <= 0 || height <= 0 || width > maximumSide || height > maximumSide)
        return Error { "bitmap.size", "The image size is not valid.", fmt::format("{}x{}", width, height) };
    const std::uint8_t pixel[bytesPerPixel] = { static_cast<std::uint8_t>(rgba >> 24),
        static_cast<std::uint8_t>(rgba >> 16), static_cast<std::uint8_t>(rgba >> 8), static_cast<std::uint8_t>(rgba) };
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * bytesPerPixel);
    for (std::size_t i = 0; rgba != 0 && i < pixels.size(); i += bytesPerPixel)
        std::memcpy(pixels.data() + i, pixel, bytesPerPixel);
    return Bitmap(width, height, width * bytesPerPixel, std::move(pixels));
}

Bitmap Bitmap::image(RowRange rows) const
{
    assert(rows.begin >= 0 && rows.end <= m_height && !rows.empty());
    std::vector<std::uint8_t> pixels(rowBytes() * static_cast<std::size_t>(rows.count()));
    for (int y = rows.begin; y < rows.end; ++y)
        std::memcpy(pixels.data() + static_cast<std::size_t>(y - rows.begin) * rowBytes(), row(y), rowBytes());
    return Bitmap(m_width, rows.count(), m_width * bytesPerPixel, std::move(pixels));
}

bool Bitmap::samePixels(const Bitmap& other) const
{
    if (m_width != other.m_width || m_height != other.m_height)
        return false;
    for (int y = 0; y < m_height; ++y) {
        if (std::memcmp(row(y), other.row(y), rowBytes()) != 0)
            return false;
    }
    return true;
}

} // namespace quillmar
