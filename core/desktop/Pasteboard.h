#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/desktop/PixelSize.h"

namespace quillmar {

// Image data as the pasteboard holds it.
struct PasteboardImage {
    std::string data;       // the encoded bytes
    std::string type;       // its type identifier ("public.png", "public.tiff")
    PixelSize pixelSize;

    bool operator==(const PasteboardImage&) const = default;
};

// Everything one read of the pasteboard found, as the system gave it.
struct PasteboardReading {
    std::int64_t changeCount = 0;
    // Every type identifier on the pasteboard, in the copier's order of preference.
    std::vector<std::string> types;
    // The string value of each text or marker type that has one ("public.utf8-plain-text" to the text,
    // "org.nspasteboard.source" to a bundle identifier).
    std::map<std::string, std::string> strings;
    std::vector<std::string> filePaths;
    std::optional<PasteboardImage> image;
    // The bytes of every other type that carries data (rich text, HTML, an application's own types), so
    // that the contents can be put back as they were.
    std::map<std::string, std::string> data;

    // The text in the order of preference of PasteboardTypes::text; none when there is no text.
    std::optional<std::string> preferredText() const;

    bool operator==(const PasteboardReading&) const = default;
};

// What to put on the pasteboard. `markers` are declared as types without data, so that readers (the
// history itself among them) can tell where the content came from.
struct PasteboardWriting {
    std::optional<std::string> text;
    std::vector<std::string> filePaths;
    std::optional<PasteboardImage> image;
    std::vector<std::string> markers;
    // Contents read earlier, put back exactly: every type in its order with its string, bytes, files or
    // image, and types without data declared as such. Used instead of `text`, `filePaths` and `image`;
    // `markers` not already among its types follow them.
    std::optional<PasteboardReading> contents;

    bool operator==(const PasteboardWriting&) const = default;
};

// The system's general pasteboard. `changeCount` and `read` may be called from any thread (reads run on
// a background queue and may be slow); `write` and `clear` on the main thread.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    // Goes up by at least one whenever anyone changes the pasteboard.
    virtual std::int64_t changeCount() const = 0;

    virtual PasteboardReading read() = 0;

    // Replaces the contents; false when the system refused.
    virtual bool write(const PasteboardWriting& writing) = 0;

    // Empties the pasteboard.
    virtual void clear() = 0;
};

} // namespace quillmar
