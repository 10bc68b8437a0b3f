#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace quillmar {

// The stored spelling of each value of an enum: what settings, files and the command line read and write.
// Rows are searched in order, so a table of a few dozen rows costs nothing worth indexing.
template <typename E, std::size_t N>
struct RawValueTable {
    static_assert(N > 0, "a raw value table needs at least one row");

    std::array<std::pair<E, std::string_view>, N> rows;

    // The value spelled exactly `raw` (case matters), or nothing.
    constexpr std::optional<E> fromRawValue(std::string_view raw) const
    {
        for (const auto& [value, name] : rows) {
            if (name == raw)
                return value;
        }
        return std::nullopt;
    }

    // The spelling of `value`; the first row's for a value the table lacks, which only a cast can make.
    constexpr std::string_view rawValue(E value) const
    {
        for (const auto& [candidate, name] : rows) {
            if (candidate == value)
                return name;
        }
        return rows.front().second;
    }
};

// A table whose row count is counted for the caller: rawValueTable<Kind>({ { Kind::a, "a" }, ... }).
template <typename E, std::size_t N>
constexpr RawValueTable<E, N> rawValueTable(std::pair<E, std::string_view> (&&rows)[N])
{
    RawValueTable<E, N> table {};
    for (std::size_t index = 0; index < N; ++index)
        table.rows[index] = rows[index];
    return table;
}

} // namespace quillmar
