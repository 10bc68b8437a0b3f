#pragma once

#include <cstdint>
#include <initializer_list>
#include <vector>

#include "core/shell/FeatureID.h"

namespace quillmar {

// A set of features as one 64-bit word: cheap to copy and compare, iterated in declaration order.
class FeatureSet final {
public:
    constexpr FeatureSet() = default;
    constexpr FeatureSet(std::initializer_list<FeatureID> features)
    {
        for (auto feature : features)
            insert(feature);
    }

    static FeatureSet all();

    constexpr bool contains(FeatureID feature) const { return (m_bits & bit(feature)) != 0; }
    constexpr void insert(FeatureID feature) { m_bits |= bit(feature); }
    constexpr void erase(FeatureID feature) { m_bits &= ~bit(feature); }
    constexpr bool empty() const { return m_bits == 0; }
    int size() const;

    constexpr FeatureSet operator|(FeatureSet other) const { return fromBits(m_bits | other.m_bits); }
    constexpr FeatureSet operator-(FeatureSet other) const { return fromBits(m_bits & ~other.m_bits); }
    constexpr FeatureSet& operator|=(FeatureSet other) { m_bits |= other.m_bits; return *this; }
    constexpr bool operator==(const FeatureSet&) const = default;

    // The members in declaration order.
    std::vector<FeatureID> members() const;

private:
    static constexpr std::uint64_t bit(FeatureID feature) { return std::uint64_t { 1 } << static_cast<unsigned>(feature); }
    static constexpr FeatureSet fromBits(std::uint64_t bits)
    {
        FeatureSet set;
        set.m_bits = bits;
        return set;
    }

    std::uint64_t m_bits = 0;
};

} // namespace quillmar
