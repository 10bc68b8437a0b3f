#include "core/apps/BundleNameCollation.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <string_view>

namespace quillmar {

void BundleNameCollation::sort(std::vector<InstalledBundle>& bundles) const
{
    // Sort keys once per name, then plain byte comparisons.
    std::vector<std::string> keys(bundles.size());
    for (std::size_t index = 0; index < bundles.size(); ++index)
        keys[index] = m_collation.sortKey(bundles[index].name);
    std::vector<std::size_t> order(bundles.size());
    std::iota(order.begin(), order.end(), std::size_t { 0 });
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
    std::vector<InstalledBundle> sorted;
    sorted.reserve(bundles.size());
    for (auto index : order)
        sorted.push_back(std::move(bundles[index]));
    bundles = std::move(sorted);
}

} // namespace quillmar
