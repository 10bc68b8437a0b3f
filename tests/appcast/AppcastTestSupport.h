#pragma once

#include <chrono>
#include <ostream>
#include <string>
#include <string_view>

#include "core/appcast/AppcastItem.h"

namespace quillmar {

inline constexpr std::string_view sparkleUri = "http://www.andymatuschak.org/xml-namespaces/sparkle";

// A feed document around `items`, with the `sparkle:` prefix declared.
inline std::string feedWithItems(std::string_view items)
{
    return std::string("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<rss version=\"2.0\" xmlns:sparkle=\"") + std::string(sparkleUri)
        + "\">\n<channel>\n<title>Example</title>\n<link>https://example.com/</link>\n" + std::string(items)
        + "</channel>\n</rss>\n";
}

inline std::chrono::sys_seconds epochSeconds(long long seconds)
{
    return std::chrono::sys_seconds(std::chrono::seconds(seconds));
}

// So that a failed comparison shows the fields.
inline void PrintTo(const AppcastItem& item, std::ostream* out)
{
    auto field = [out](const char* name, const auto& value) {
        if (value)
            *out << name << "=\"" << *value << "\" ";
    };
    *out << "{ ";
    field("title", item.title);
    field("version", item.version);
    field("shortVersion", item.shortVersion);
    field("minimumSystemVersion", item.minimumSystemVersion);
    field("maximumSystemVersion", item.maximumSystemVersion);
    field("minimumUpdateVersion", item.minimumUpdateVersion);
    field("channel", item.channel);
    field("hardwareRequirements", item.hardwareRequirements);
    field("os", item.os);
    field("downloadURL", item.downloadURL);
    field("link", item.link);
    field("releaseNotesURL", item.releaseNotesURL);
    field("notesHTML", item.notesHTML);
    if (item.date)
        *out << "date=" << item.date->time_since_epoch().count() << ' ';
    *out << '}';
}

} // namespace quillmar
