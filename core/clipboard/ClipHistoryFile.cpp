#include "core/clipboard/ClipHistoryFile.h"

#include <unordered_set>

#include <nlohmann/json.hpp>

namespace quillmar::ClipHistoryFile {

Result<Decoded> decode(std::string_view text)
{
    auto json = nlohmann::json::parse(text, /*callback=*/nullptr, /*allow_exceptions=*/false);
    if (json.is_discarded())
        return Error { "clipboard.malformed", "The clipboard history is not valid JSON.", {} };
    if (!json.is_array())
        return Error { "clipboard.malformed", "The clipboard history is not a list of items.", {} };
    Decoded decoded;
    std::unordered_set<std::string> ids;
    for (const auto& entry : json) {
        auto item = ClipItem::fromJson(entry);
        if (!item || !ids.insert(item->id).second) {
            ++decoded.dropped;
            continue;
        }
        decoded.items.push_back(std::move(*item));
    }
    return decoded;
}

std::string encode(const std::vector<ClipItem>& items)
{
    auto json = nlohmann::json::array();
    for (const auto& item : items)
        json.push_back(item.toJson());
    // Text from the pasteboard may carry broken UTF-8; it is replaced rather than allowed to fail the save.
    return json.dump(/*indent=*/1, ' ', /*ensure_ascii=*/false, nlohmann::json::error_handler_t::replace) + "\n";
}

} // namespace quillmar::ClipHistoryFile
