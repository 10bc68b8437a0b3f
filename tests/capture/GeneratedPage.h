#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "core/capture/Bitmap.h"

namespace quillmar::testing_support {

// A tall synthetic page to scroll through, made in code: lines of text-like glyph rows on white with
// blank gaps between them, and now and then a uniform band of colour. Frames are windows onto it, with an
// optional sticky header and footer drawn over the page and an optional scroll-bar thumb at the right.
struct PageView {
    int headerRows = 0;
    int footerRows = 0;
    bool scrollBar = false;
};

class GeneratedPage final {
public:
    using View = PageView;

    static constexpr std::uint32_t white = 0xffffffffu;

    GeneratedPage(int width, int height, std::uint32_t seed = 1)
        : m_width(width)
        , m_height(height)
        , m_pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), white)
    {
        std::mt19937 random(seed);
        int y = 0;
        int line = 0;
        while (y < height) {
            if (++line % 9 == 0) {
                // A band of one colour, 12 to 35 rows: every row is flagged.
                int rows = 12 + static_cast<int>(random() % 24);
                std::uint32_t colour = 0x8090a0ffu + ((static_cast<std::uint32_t>(random()) % 64) << 8);
                fill(y, std::min(height, y + rows), colour);
                y += rows;
            } else {
                drawTextLine(random, y, std::min(height, y + glyphRows));
                y += glyphRows + 4 + static_cast<int>(random() % 5); // the gap below stays white
            }
        }
    }

    int width() const { return m_width; }
    int height() const { return m_height; }

    // The page itself, whole.
    Bitmap page() const { return rows(0, m_height); }

    // Page rows [top, top + count) as a bitmap.
    Bitmap rows(int top, int count) const
    {
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(m_width) * static_cast<std::size_t>(count) * 4);
        for (int y = 0; y < count; ++y)
            copyRow(pageRow(top + y), bytes.data() + static_cast<std::size_t>(y) * rowBytes());
        return Bitmap::create(m_width, count, m_width * 4, std::move(bytes)).value();
    }

    // What the screen shows with the page scrolled so that page row `top` is at the frame's top.
    Bitmap frame(int top, int frameHeight, View view = {}) const
    {
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(m_width) * static_cast<std::size_t>(frameHeight) * 4);
        for (int y = 0; y < frameHeight; ++y) {
            auto* out = bytes.data() + static_cast<std::size_t>(y) * rowBytes();
            if (y < view.headerRows)
                copyRow(stickyRow(y, 0x30a0ff00u), out);
            else if (y >= frameHeight - view.footerRows)
                copyRow(stickyRow(y - (frameHeight - view.footerRows), 0x40c08000u), out);
            else
                copyRow(pageRow(top + y), out);
        }
        if (view.scrollBar)
            drawThumb(bytes, top, frameHeight);
        return Bitmap::create(m_width, frameHeight, m_width * 4, std::move(bytes)).value();
    }

    // The image a perfect stitch of frames from page row `firstTop` down to `lastTop` gives: the header,
    // the page rows in between, then the footer.
    Bitmap expected(int firstTop, int lastTop, int frameHeight, View view = {}) const
    {
        int pageRows = lastTop + frameHeight - view.footerRows - (firstTop + view.headerRows);
        int total = view.headerRows + pageRows + view.footerRows;
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(m_width) * static_cast<std::size_t>(total) * 4);
        for (int y = 0; y < total; ++y) {
            auto* out = bytes.data() + static_cast<std::size_t>(y) * rowBytes();
            if (y < view.headerRows)
                copyRow(stickyRow(y, 0x30a0ff00u), out);
            else if (y >= total - view.footerRows)
                copyRow(stickyRow(y - (total - view.footerRows), 0x40c08000u), out);
            else
                copyRow(pageRow(firstTop + y), out);
        }
        return Bitmap::create(m_width, total, m_width * 4, std::move(bytes)).value();
    }

private:
    static constexpr int glyphRows = 11;

    std::size_t rowBytes() const { return static_cast<std::size_t>(m_width) * 4; }

    const std::uint32_t* pageRow(int y) const { return m_pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width); }

    // Rows of a header or footer: text-like, different from one another and from the page.
    std::vector<std::uint32_t> stickyRow(int index, std::uint32_t tint) const
    {
        std::vector<std::uint32_t> row(static_cast<std::size_t>(m_width), 0xe8e8e8ffu);
        std::mt19937 random(static_cast<std::uint32_t>(index * 7919 + static_cast<int>(tint >> 8)));
        for (int x = 4; x < m_width - 4; ++x) {
            if (random() % 3 == 0)
                row[static_cast<std::size_t>(x)] = tint | static_cast<std::uint32_t>(0xff);
        }
        return row;
    }

    void copyRow(const std::vector<std::uint32_t>& row, std::uint8_t* out) const { copyRow(row.data(), out); }
    void copyRow(const std::uint32_t* row, std::uint8_t* out) const
    {
        for (int x = 0; x < m_width; ++x) {
            std::uint32_t pixel = row[x];
            out[4 * x] = static_cast<std::uint8_t>(pixel >> 24);
            out[4 * x + 1] = static_cast<std::uint8_t>(pixel >> 16);
            out[4 * x + 2] = static_cast<std::uint8_t>(pixel >> 8);
            out[4 * x + 3] = static_cast<std::uint8_t>(pixel);
        }
    }

    void fill(int from, int to, std::uint32_t colour)
    {
        std::fill(m_pixels.begin() + static_cast<std::ptrdiff_t>(from) * m_width,
            m_pixels.begin() + static_cast<std::ptrdiff_t>(to) * m_width, colour);
    }

    // Words of glyphs 4 to 9 pixels wide; each glyph pixel is ink or paper at random, so rows differ.
    void drawTextLine(std::mt19937& random, int from, int to)
    {
        int margin = std::max(2, m_width / 20);
        int end = m_width - margin - static_cast<int>(random() % static_cast<unsigned>(std::max(1, m_width / 4)));
        std::uint32_t ink = 0x202020ffu + ((static_cast<std::uint32_t>(random()) % 3) << 24);
        int x = margin;
        while (x < end) {
            int word = 2 + static_cast<int>(random() % 7);
            for (int g = 0; g < word && x < end; ++g) {
                int glyph = 4 + static_cast<int>(random() % 6);
                for (int y = from; y < to; ++y) {
                    for (int gx = x; gx < std::min(end, x + glyph - 1); ++gx) {
                        if (random() % 5 < 2)
                            m_pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) + static_cast<std::size_t>(gx)] = ink;
                    }
                }
                x += glyph;
            }
            x += 3 + static_cast<int>(random() % 5);
        }
    }

    // An overlay thumb 6 pixels wide near the right edge; its place follows the scroll position.
    void drawThumb(std::vector<std::uint8_t>& bytes, int top, int frameHeight) const
    {
        int length = std::max(16, frameHeight * frameHeight / m_height);
        int thumbTop = static_cast<int>(static_cast<long long>(top) * (frameHeight - length) / std::max(1, m_height - frameHeight));
        for (int y = thumbTop; y < std::min(frameHeight, thumbTop + length); ++y) {
            for (int x = m_width - 9; x < m_width - 3; ++x) {
                auto* p = bytes.data() + static_cast<std::size_t>(y) * rowBytes() + static_cast<std::size_t>(x) * 4;
                p[0] = p[1] = p[2] = 0x70;
                p[3] = 0xff;
            }
        }
    }

    int m_width;
    int m_height;
    std::vector<std::uint32_t> m_pixels; // 0xRRGGBBAA
};

} // namespace quillmar::testing_support
