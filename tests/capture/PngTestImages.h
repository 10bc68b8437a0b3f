#pragma once

#include <csetjmp>
#include <cstdint>
#include <string>
#include <vector>

#include <png.h>

namespace quillmar::testing_support {

// PNG files of colour types and layouts that the encoder under test never writes, made with libpng
// directly. `rows` holds each row's packed bytes in the file's own format.
struct RawPng {
    int width = 1;
    int height = 1;
    int colorType = PNG_COLOR_TYPE_RGB;
    int bitDepth = 8;
    int interlace = PNG_INTERLACE_NONE;
    std::vector<png_color> palette;
    std::vector<png_byte> transparency; // tRNS alpha for each palette entry
    std::vector<std::vector<png_byte>> rows;
};

inline void appendBytes(png_structp png, png_bytep data, png_size_t length)
{
    static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<const char*>(data), length);
}

inline bool writeRaw(png_structp png, png_infop info, const RawPng* image, std::string* out, png_bytep* rowPointers)
{
    if (setjmp(png_jmpbuf(png)))
        return false;
    png_set_write_fn(png, out, appendBytes, nullptr);
    png_set_IHDR(png, info, static_cast<png_uint_32>(image->width), static_cast<png_uint_32>(image->height), image->bitDepth,
        image->colorType, image->interlace, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (!image->palette.empty())
        png_set_PLTE(png, info, image->palette.data(), static_cast<int>(image->palette.size()));
    if (!image->transparency.empty())
        png_set_tRNS(png, info, image->transparency.data(), static_cast<int>(image->transparency.size()), nullptr);
    png_write_info(png, info);
    png_write_image(png, rowPointers);
    png_write_end(png, nullptr);
    return true;
}

inline std::string encodeRaw(RawPng image)
{
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    std::vector<png_bytep> rowPointers;
    for (auto& row : image.rows)
        rowPointers.push_back(row.data());
    std::string out;
    bool written = writeRaw(png, info, &image, &out, rowPointers.data());
    png_destroy_write_struct(&png, &info);
    return written ? out : std::string();
}

// CRC-32 as PNG chunks use it, to forge chunks that only fail on their content.
inline std::uint32_t chunkCrc(const std::string& bytes)
{
    std::uint32_t crc = 0xffffffffu;
    for (char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (0xedb88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

} // namespace quillmar::testing_support
