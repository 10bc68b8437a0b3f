#include "platform/linux/X11ClipboardTargets.h"

#include <algorithm>

#include "core/base/Text.h"
#include "core/base/Utf8.h"
#include "core/desktop/PasteboardTypes.h"

namespace quillmar::X11ClipboardTargets {

namespace {

using enum ClipboardContent;

// The core names its files and rich content after the system it was first written for; X names them by MIME
// type. Markers the core knows are also accepted under their own names, which cross-platform applications
// offer as they are.
std::vector<ClipboardTarget> makeTable()
{
    std::vector<ClipboardTarget> table {
        { "UTF8_STRING", PasteboardTypes::text[0], text },
        { "text/plain;charset=utf-8", PasteboardTypes::text[0], text },
        { "STRING", PasteboardTypes::text[0], text, false, true },
        { "TEXT", PasteboardTypes::text[0], text, false },
        { "text/plain", PasteboardTypes::text[0], text, false },
        { "text/uri-list", PasteboardTypes::fileUrl, files },
        { "x-special/gnome-copied-files", PasteboardTypes::fileUrl, files, false },
        { "image/png", PasteboardTypes::png, image },
        { "text/html", PasteboardTypes::html, data },
        { "text/rtf", PasteboardTypes::rtf, data },
        { "application/rtf", PasteboardTypes::rtf, data, false },
        // Password managers (KeePassXC among them) mark secrets the way the KDE clipboard reads them.
        { "x-kde-passwordManagerHint", PasteboardTypes::concealed, marker, true, false, "secret" },
        { PasteboardTypes::concealed, PasteboardTypes::concealed, marker },
        { PasteboardTypes::declaredSource, PasteboardTypes::declaredSource, marker },
        { PasteboardTypes::own, PasteboardTypes::own, marker },
    };
    for (auto transient : PasteboardTypes::transient)
        table.push_back({ transient, transient, marker });
    return table;
}

bool isUnreserved(unsigned char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z')
        || (character >= '0' && character <= '9') || character == '-' || character == '.' || character == '_'
        || character == '~' || character == '/';
}

std::optional<std::string> percentDecoded(std::string_view text)
{
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] != '%') {
            decoded += text[index];
            continue;
        }
        if (index + 2 >= text.size())
            return std::nullopt;
        int high = hexDigitValue(text[index + 1]);
        int low = hexDigitValue(text[index + 2]);
        if (high < 0 || low < 0)
            return std::nullopt;
        decoded += static_cast<char>(high * 16 + low);
        index += 2;
    }
    return decoded;
}

// The local path of one URI; none for anything but a local file URI.
std::optional<std::string> localPath(std::string_view uri)
{
    constexpr std::string_view scheme = "file:";
    if (uri.size() < scheme.size() || !std::equal(scheme.begin(), scheme.end(), uri.begin(),
            [](char a, char b) { return a == (b >= 'A' && b <= 'Z' ? b - 'A' + 'a' : b) || a == b; }))
        return std::nullopt;
    uri.remove_prefix(scheme.size());
    if (uri.substr(0, 2) == "//") {
        uri.remove_prefix(2);
        auto slash = uri.find('/');
        if (slash == std::string_view::npos)
            return std::nullopt;
        auto host = uri.substr(0, slash);
        if (!host.empty() && host != "localhost")
            return std::nullopt;
        uri.remove_prefix(slash);
    }
    if (uri.empty() || uri.front() != '/')
        return std::nullopt;
    auto path = percentDecoded(uri.substr(0, uri.find_first_of("?#")));
    if (!path || path->find('\0') != std::string::npos)
        return std::nullopt;
    return path;
}

std::uint32_t bigEndian(std::string_view bytes, std::size_t at)
{
    std::uint32_t value = 0;
    for (std::size_t index = 0; index < 4; ++index)
        value = value << 8 | static_cast<unsigned char>(bytes[at + index]);
    return value;
}

} // namespace

const std::vector<ClipboardTarget>& all()
{
    static const std::vector<ClipboardTarget> table = makeTable();
    return table;
}

const ClipboardTarget* find(std::string_view target)
{
    const auto& table = all();
    auto found = std::find_if(table.begin(), table.end(), [&](const ClipboardTarget& row) { return row.target == target; });
    return found == table.end() ? nullptr : &*found;
}

std::vector<const ClipboardTarget*> offeredFor(std::string_view type)
{
    std::vector<const ClipboardTarget*> targets;
    for (const auto& row : all()) {
        if (row.type == type && row.offered)
            targets.push_back(&row);
    }
    return targets;
}

std::string decodeText(std::string_view bytes, bool latin1)
{
    if (latin1) {
        std::u32string codePoints;
        codePoints.reserve(bytes.size());
        for (char byte : bytes)
            codePoints.push_back(static_cast<unsigned char>(byte));
        return encodeUtf8(codePoints);
    }
    if (isValidUtf8(bytes))
        return std::string(bytes);
    return encodeUtf8(decodeUtf8(bytes));
}

std::vector<std::string> decodeFiles(std::string_view bytes)
{
    std::vector<std::string> paths;
    while (!bytes.empty()) {
        auto end = bytes.find('\n');
        auto line = bytes.substr(0, end);
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
        while (!line.empty() && (line.back() == '\r' || line.back() == ' ' || line.back() == '\0'))
            line.remove_suffix(1);
        // Comments in a uri-list; "copy" or "cut" first in a file manager's list.
        if (line.empty() || line.front() == '#' || line == "copy" || line == "cut")
            continue;
        if (auto path = localPath(line))
            paths.push_back(std::move(*path));
    }
    return paths;
}

std::string encodeFiles(const std::vector<std::string>& paths)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string list;
    for (const auto& path : paths) {
        list += "file://";
        for (char byte : path) {
            auto character = static_cast<unsigned char>(byte);
            if (isUnreserved(character)) {
                list += static_cast<char>(character);
            } else {
                list += '%';
                list += digits[character >> 4];
                list += digits[character & 0xF];
            }
        }
        list += "\r\n";
    }
    return list;
}

PixelSize pngSize(std::string_view bytes)
{
    constexpr std::string_view signature = "\x89PNG\r\n\x1a\n";
    // The signature, then the IHDR chunk: length, "IHDR", width, height.
    if (bytes.size() < 24 || bytes.substr(0, signature.size()) != signature || bytes.substr(12, 4) != "IHDR")
        return {};
    return { bigEndian(bytes, 16), bigEndian(bytes, 20) };
}

} // namespace quillmar::X11ClipboardTargets
