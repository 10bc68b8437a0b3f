#include "core/shell/FeatureSet.h"

#include <bit>

namespace quillmar {

FeatureSet FeatureSet::all()
{
    FeatureSet set;
    for (auto feature : allFeatures())
        set.insert(feature);
    return set;
}

int FeatureSet::size() const
{
    return std::popcount(m_bits);
}

std::vector<FeatureID> FeatureSet::members() const
{
    std::vector<FeatureID> result;
    for (auto feature : allFeatures()) {
        if (contains(feature))
            result.push_back(feature);
    }
    return result;
}

} // namespace quillmar
