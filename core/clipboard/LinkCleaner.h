#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillmar {

// Removing tracking parameters from web links.
namespace LinkCleaner {

// The sentences a link command reports.
inline constexpr std::string_view noLinkMessage = "No link in the clipboard";
inline constexpr std::string_view alreadyCleanMessage = "Link is already clean";
inline constexpr std::string_view cleanedMessage = "Tracking removed";

// True for a query parameter name (percent-decoded, compared without regard to case) that only tells a
// site or an advertiser where the click came from: campaign tags ("utm_…", Matomo's "pk_…" and "mtm_…"),
// click identifiers of advertising networks ("gclid", "fbclid", "msclkid", …), and mail-campaign and
// analytics hand-offs ("mc_eid", "_hsenc", "_ga", …). Parameters that can change what the page shows are
// never in the list.
bool isTrackingParameter(std::string_view name);

// The link without its tracking parameters, other parameters, their order and their spelling kept; the
// "?" goes when nothing is left. None when `link` (trimmed of surrounding whitespace) is not an http or
// https link, or has no tracking parameter.
std::optional<std::string> clean(std::string_view link);

} // namespace LinkCleaner

} // namespace quillmar
