#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/clipboard/ClipItem.h"

namespace quillmar {

// What a clipboard target's bytes are, and so how they are read and written.
enum class ClipboardContent {
    text, // UTF-8 text; a few legacy targets are Latin-1 (see ClipboardTarget::latin1)
    files, // a text/uri-list (or a file manager's "copy"/"cut" list): file paths
    image, // encoded image bytes
    data, // other bytes kept as they are (HTML, rich text)
    marker, // a type whose presence (or short value) says something about the copy
};

// One row of the table between the X selection targets (ICCCM names and MIME types) and the pasteboard type
// identifiers the core uses.
struct ClipboardTarget {
    std::string_view target; // the X atom's name
    std::string_view type; // the core's type identifier
    ClipboardContent content;
    bool offered = true; // also served when writing, not only understood when reading
    bool latin1 = false; // ICCCM's STRING: ISO 8859-1
    // For a marker: the value the target must hold to count (empty: its presence is enough).
    std::string_view markerValue = {};
};

// The table and the conversions of what the clipboard carries. Pure: no connection needed.
namespace X11ClipboardTargets {

// The row of an X target; none for a target the history does not read (TIMESTAMP, MULTIPLE, image/bmp...).
// Targets of the same type come in their order of preference: the first readable one is fetched.
const ClipboardTarget* find(std::string_view target);

// The targets offered for a core type when writing, best first; empty when X has no name for it.
std::vector<const ClipboardTarget*> offeredFor(std::string_view type);

// Every row, best first within each type.
const std::vector<ClipboardTarget>& all();

// Text as the core keeps it: valid UTF-8, with each malformed byte (or, for Latin-1, each byte) decoded.
std::string decodeText(std::string_view bytes, bool latin1);

// The absolute local paths of a text/uri-list or a file manager's list: "file:" URIs with an empty host or
// "localhost", percent-decoded. Comments, relative, remote and non-file entries are skipped.
std::vector<std::string> decodeFiles(std::string_view bytes);

// A text/uri-list of `paths` ("file://" plus the percent-encoded absolute path, CRLF after each).
std::string encodeFiles(const std::vector<std::string>& paths);

// The pixel size written in a PNG's header; zero when `bytes` is not a PNG.
PixelSize pngSize(std::string_view bytes);

} // namespace X11ClipboardTargets

} // namespace quillmar
