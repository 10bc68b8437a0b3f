#include "core/clipboard/LinkCleaner.h"

#include <algorithm>
#include <array>
#include <vector>

#include "core/base/Text.h"
#include "core/clipboard/WebLink.h"

namespace quillmar::LinkCleaner {

namespace {

constexpr std::array<std::string_view, 6> trackingPrefixes {
    "utm_", "pk_", "mtm_", "matomo_", "piwik_", "hsa_",
};

constexpr std::array<std::string_view, 38> trackingNames {
    // Click identifiers of advertising networks.
    "gclid", "gclsrc", "dclid", "gbraid", "wbraid", "fbclid", "msclkid", "yclid", "twclid", "ttclid",
    "li_fat_id", "igshid", "igsh", "epik", "rb_clickid", "srsltid", "sccid", "scclid",
    // Mail campaigns and marketing automation.
    "mc_cid", "mc_eid", "_hsenc", "_hsmi", "__hssc", "__hstc", "__hsfp", "hsctatracking", "mkt_tok",
    "oly_anon_id", "oly_enc_id", "vero_conv", "vero_id", "wickedid", "s_cid",
    // Analytics hand-offs and share referrers.
    "_ga", "_gl", "_openstat", "ref_src", "ref_url",
};

// Percent-decoded and lower-cased (ASCII), "+" read as a space as forms write it.
std::string normalisedName(std::string_view name)
{
    std::string result;
    result.reserve(name.size());
    for (std::size_t index = 0; index < name.size(); ++index) {
        char character = name[index];
        if (character == '%' && index + 2 < name.size()) {
            int high = hexDigitValue(name[index + 1]);
            int low = hexDigitValue(name[index + 2]);
            if (high >= 0 && low >= 0) {
                character = static_cast<char>(high * 16 + low);
                index += 2;
            }
        } else if (character == '+') {
            character = ' ';
        }
        result += asciiLower(character);
    }
    return result;
}

} // namespace

bool isTrackingParameter(std::string_view name)
{
    auto normalised = normalisedName(name);
    for (auto prefix : trackingPrefixes) {
        if (normalised.size() > prefix.size() && normalised.compare(0, prefix.size(), prefix) == 0)
            return true;
    }
    return std::find(trackingNames.begin(), trackingNames.end(), normalised) != trackingNames.end();
}

std::optional<std::string> clean(std::string_view link)
{
    auto url = WebLink::parse(trimmed(link));
    if (!url || !url->query)
        return std::nullopt;
    std::vector<std::string_view> kept;
    bool removed = false;
    std::string_view query = *url->query;
    for (;;) {
        auto ampersand = query.find('&');
        auto item = query.substr(0, ampersand);
        auto name = item.substr(0, item.find('='));
        if (!name.empty() && isTrackingParameter(name))
            removed = true;
        else
            kept.push_back(item);
        if (ampersand == std::string_view::npos)
            break;
        query.remove_prefix(ampersand + 1);
    }
    if (!removed)
        return std::nullopt;
    std::string rebuilt;
    for (auto item : kept) {
        if (item.empty())
            continue;
        if (!rebuilt.empty())
            rebuilt += '&';
        rebuilt += item;
    }
    if (rebuilt.empty())
        url->query.reset();
    else
        url->query = std::move(rebuilt);
    return url->toString();
}

} // namespace quillmar::LinkCleaner
