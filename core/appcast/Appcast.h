#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "core/appcast/AppcastItem.h"
#include "core/appcast/OperatingSystemVersion.h"
#include "core/base/ParseResult.h"

namespace quillmar {

// Developer update feeds: RSS documents with the Sparkle extensions. Pure functions over bytes and strings.
class Appcast final {
public:
    Appcast() = delete;

    // The items of the document in order, blank ones left out. Fails `refused` when the document declares an
    // entity, `tooLarge` when it nests deeper than AppcastReader::maximumDepth or holds more than
    // AppcastReader::maximumItems items, and `malformed` when it is not well-formed XML (with namespaces: an
    // undeclared prefix is malformed). External entities and DTDs are never read.
    static ParseResult<std::vector<AppcastItem>> parse(std::string_view bytes);

    // The newest release item the installed copy may update to on this system and architecture ("arm64"):
    // it has a download, no channel, fits the system, its versions are plain dotted numbers, and it is newer
    // than the installed build (or short version). Among equal versions the first in the list wins. None
    // when no item qualifies.
    static std::optional<AppcastItem> bestUpdate(const std::vector<AppcastItem>& items, std::string_view installedBuild,
        std::string_view installedShort, const OperatingSystemVersion& system, std::string_view arch);
};

} // namespace quillmar
