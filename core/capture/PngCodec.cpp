#include "core/capture/PngCodec.h"

#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <vector>

#include <fmt/format.h>
#include <png.h>

namespace quillmar {

namespace {

// libpng reports errors by longjmp to the setjmp in the one function that drives it; it prints nothing.
// The message is kept here so that the function can turn it into an Error after the jump.
struct PngFailure {
    char message[128] = {};
};

void recordError(png_structp png, png_const_charp message)
{
    if (auto* failure = static_cast<PngFailure*>(png_get_error_ptr(png)))
        std::snprintf(failure->message, sizeof failure->message, "%s", message);
    png_longjmp(png, 1);
}

void ignoreWarning(png_structp, png_const_charp) { }

struct MemoryReader {
    const png_byte* data;
    std::size_t size;
    std::size_t offset = 0;
};

void readFromMemory(png_structp png, png_bytep out, png_size_t length)
{
    auto* source = static_cast<MemoryReader*>(png_get_io_ptr(png));
    if (length > source->size - source->offset)
        png_error(png, "truncated data");
    std::memcpy(out, source->data + source->offset, length);
    source->offset += length;
}

void writeToString(png_structp png, png_bytep data, png_size_t length)
{
    static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<const char*>(data), length);
}

void flushNothing(png_structp) { }

// Owns a libpng read or write structure and its info structure.
class PngHandle final {
public:
    enum class Mode { read, write };

    PngHandle(Mode mode, PngFailure& failure)
        : m_mode(mode)
    {
        m_png = mode == Mode::read
            ? png_create_read_struct(PNG_LIBPNG_VER_STRING, &failure, recordError, ignoreWarning)
            : png_create_write_struct(PNG_LIBPNG_VER_STRING, &failure, recordError, ignoreWarning);
        if (m_png)
            m_info = png_create_info_struct(m_png);
    }
    ~PngHandle()
    {
        if (m_mode == Mode::read)
            png_destroy_read_struct(&m_png, m_info ? &m_info : nullptr, nullptr);
        else
            png_destroy_write_struct(&m_png, m_info ? &m_info : nullptr);
    }
    PngHandle(const PngHandle&) = delete;
    PngHandle& operator=(const PngHandle&) = delete;

    bool valid() const { return m_png && m_info; }
    png_structp png() const { return m_png; }
    png_infop info() const { return m_info; }

private:
    Mode m_mode;
    png_structp m_png = nullptr;
    png_infop m_info = nullptr;
};

struct DecodedSize {
    png_uint_32 width = 0;
    png_uint_32 height = 0;
};

// Everything between setjmp and the last libpng call lives here, with only trivially destructible locals,
// so that a longjmp out of libpng skips no destructor. `pixels` belongs to the caller; it is grown row by
// row, so a truncated file claiming a huge size fails before much memory is taken. False on failure.
bool readPixels(png_structp png, png_infop info, MemoryReader* source, DecodedSize* size,
    std::vector<std::uint8_t>* pixels)
{
    if (setjmp(png_jmpbuf(png)))
        return false;
    png_set_read_fn(png, source, readFromMemory);
    png_set_user_limits(png, Bitmap::maximumSide, Bitmap::maximumSide);
    png_read_info(png, info);

    size->width = png_get_image_width(png, info);
    size->height = png_get_image_height(png, info);
    if (static_cast<long long>(size->width) * size->height > maximumPngPixels)
        png_error(png, "too many pixels");

    int colorType = png_get_color_type(png, info);
    if (png_get_bit_depth(png, info) == 16)
        png_set_strip_16(png);
    if (colorType == PNG_COLOR_TYPE_PALETTE)
        png_set_palette_to_rgb(png);
    if (colorType == PNG_COLOR_TYPE_GRAY || colorType == PNG_COLOR_TYPE_GRAY_ALPHA) {
        png_set_expand_gray_1_2_4_to_8(png);
        png_set_gray_to_rgb(png);
    }
    if (png_get_valid(png, info, PNG_INFO_tRNS))
        png_set_tRNS_to_alpha(png);
    // Only rows without alpha get the filler, so this is safe for every colour type.
    png_set_filler(png, 0xff, PNG_FILLER_AFTER);
    int passes = png_set_interlace_handling(png);
    png_read_update_info(png, info);
    if (png_get_rowbytes(png, info) != static_cast<png_size_t>(size->width) * Bitmap::bytesPerPixel)
        png_error(png, "unexpected row layout");

    std::size_t rowBytes = static_cast<std::size_t>(size->width) * Bitmap::bytesPerPixel;
    if (passes > 1) {
        // Interlaced rows are revisited on every pass: the whole image must be there from the start.
        pixels->resize(rowBytes * size->height);
        for (int pass = 0; pass < passes; ++pass) {
            for (png_uint_32 y = 0; y < size->height; ++y)
                png_read_row(png, pixels->data() + rowBytes * y, nullptr);
        }
    } else {
        for (png_uint_32 y = 0; y < size->height; ++y) {
            pixels->resize(rowBytes * (y + 1));
            png_read_row(png, pixels->data() + rowBytes * y, nullptr);
        }
    }
    png_read_end(png, nullptr);
    return true;
}

bool writePixels(png_structp png, png_infop info, const Bitmap* bitmap, std::string* out)
{
    if (setjmp(png_jmpbuf(png)))
        return false;
    png_set_write_fn(png, out, writeToString, flushNothing);
    png_set_IHDR(png, info, static_cast<png_uint_32>(bitmap->width()), static_cast<png_uint_32>(bitmap->height()), 8,
        PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    // Screens compress well at a low level; the tall image can be 40,000 rows, so speed matters more.
    png_set_compression_level(png, 3);
    png_write_info(png, info);
    for (int y = 0; y < bitmap->height(); ++y)
        png_write_row(png, bitmap->row(y));
    png_write_end(png, nullptr);
    return true;
}

} // namespace

Result<Bitmap> decodePng(std::string_view bytes)
{
    if (bytes.size() < 8 || png_sig_cmp(reinterpret_cast<png_const_bytep>(bytes.data()), 0, 8) != 0)
        return Error { "png.notPng", "The file is not a PNG image.", {} };

    PngFailure failure;
    PngHandle handle(PngHandle::Mode::read, failure);
    if (!handle.valid())
        return Error { "png.memory", "The PNG image could not be read.", "no memory for the decoder" };
    MemoryReader source { reinterpret_cast<const png_byte*>(bytes.data()), bytes.size() };
    DecodedSize size;
    std::vector<std::uint8_t> pixels;
    if (!readPixels(handle.png(), handle.info(), &source, &size, &pixels))
        return Error { "png.malformed", "The PNG image could not be read.", failure.message };
    return Bitmap::create(static_cast<int>(size.width), static_cast<int>(size.height),
        static_cast<int>(size.width) * Bitmap::bytesPerPixel, std::move(pixels));
}

Result<std::string> encodePng(const Bitmap& bitmap)
{
    PngFailure failure;
    PngHandle handle(PngHandle::Mode::write, failure);
    if (!handle.valid())
        return Error { "png.memory", "The PNG image could not be written.", "no memory for the encoder" };
    std::string out;
    if (!writePixels(handle.png(), handle.info(), &bitmap, &out))
        return Error { "png.write", "The PNG image could not be written.", failure.message };
    return out;
}

} // namespace quillmar
