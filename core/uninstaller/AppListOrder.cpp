#include "core/uninstaller/AppListOrder.h"

#include <algorithm>
#include <memory>

#include <unicode/unistr.h>

#include "core/base/Text.h"
#include "core/base/TextCollation.h"

namespace quillmar::AppListOrder {

namespace {

icu::UnicodeString folded(std::string_view text)
{
    auto value = icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
    value.foldCase();
    return value;
}

} // namespace

bool matches(const InstalledApp& app, std::string_view query)
{
    query = trimmed(query);
    if (query.empty())
        return true;
    auto needle = folded(query);
    return folded(app.name).indexOf(needle) >= 0 || folded(app.bundleID).indexOf(needle) >= 0;
}

std::vector<InstalledApp> arrange(std::vector<InstalledApp> apps, std::string_view query, UninstallSort sort)
{
    std::erase_if(apps, [query](const InstalledApp& app) { return !matches(app, query); });

    TextCollation collation;
    auto nameOrder = [&collation](const InstalledApp& left, const InstalledApp& right) -> int {
        if (auto order = collation.compare(left.name, right.name); order != 0)
            return order;
        auto byFold = folded(left.name).compare(folded(right.name));
        if (byFold != 0)
            return byFold < 0 ? -1 : 1;
        return left.url < right.url ? -1 : (right.url < left.url ? 1 : 0);
    };

    std::stable_sort(apps.begin(), apps.end(), [&](const InstalledApp& left, const InstalledApp& right) {
        switch (sort) {
        case UninstallSort::name:
            break;
        case UninstallSort::size:
            if (left.size != right.size)
                return left.size > right.size;
            break;
        case UninstallSort::lastUsed:
            if (left.lastUsed != right.lastUsed)
                return left.lastUsed && (!right.lastUsed || *left.lastUsed > *right.lastUsed);
            break;
        }
        return nameOrder(left, right) < 0;
    });
    return apps;
}

} // namespace quillmar::AppListOrder
