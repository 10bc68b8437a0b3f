#pragma once

#include <string_view>
#include <vector>

#include "core/uninstaller/InstalledApp.h"
#include "core/uninstaller/UninstallSort.h"

namespace quillmar {

// The uninstaller's list as shown: filtered by the search text, then ordered.
namespace AppListOrder {

// True when `query` (trimmed) is empty, or appears in the app's name or bundle identifier ignoring case
// (Unicode case folding).
bool matches(const InstalledApp& app, std::string_view query);

// The apps that match `query`, in `sort` order. Names are compared by the collation of the user's locale
// ignoring case; ties in size or last use fall back to the name order, then to the bundle location.
std::vector<InstalledApp> arrange(std::vector<InstalledApp> apps, std::string_view query, UninstallSort sort);

} // namespace AppListOrder

} // namespace quillmar
