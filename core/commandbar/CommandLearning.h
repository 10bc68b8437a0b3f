#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "core/base/Result.h"
#include "core/commandbar/RandomSource.h"
#include "core/runtime/Clock.h"

namespace quillmar {

// The learning book: what the user picked (frecency entries) and what they picked after typing which
// prefix (habits). A plain value; the ranker gets a copy with each query. Queries are never kept in plain
// text: habits are filed under keyed hashes of the query's prefixes.
struct CommandLearning {
    using Secret = std::array<std::uint8_t, 32>;

    struct Entry {
        double weight = 0; // before decay; one pick adds 1
        WallTime updated; // when `weight` was last set
        std::int64_t uses = 0;
        bool operator==(const Entry&) const = default;
    };

    struct Habit {
        std::int64_t count = 0;
        WallTime last;
        bool operator==(const Habit&) const = default;
    };

    using HabitGroup = std::map<std::string, Habit, std::less<>>;

    static constexpr double entryHalfLifeSeconds = 604'800; // one week
    static constexpr double habitHalfLifeSeconds = 2'419'200; // 28 days
    static constexpr double habitDecayFloor = 0.4;
    static constexpr std::size_t maxPrefixCharacters = 16;
    static constexpr std::size_t maxGroupIds = 4; // a group reaching 5 ids loses one
    static constexpr std::size_t entryLimit = 600; // above it, prune to entryKeep
    static constexpr std::size_t entryKeep = 450;
    static constexpr std::size_t groupLimit = 900; // above it, prune to groupKeep
    static constexpr std::size_t groupKeep = 675;

    std::map<std::string, Entry, std::less<>> entries; // by candidate id
    std::map<std::string, HabitGroup, std::less<>> habits; // by prefix key (lowercase hex)
    Secret secret {}; // the HMAC key of the prefix keys

    // A fresh, empty book with a new secret from `random`.
    static Result<CommandLearning> create(RandomSource& random);

    // The entry's weight decayed to `now` with a one-week half-life; 0 without an entry. An entry
    // updated after `now` counts as updated now.
    double weight(std::string_view id, WallTime now) const;

    // The bonus of each id the user picked after typing this query's longest prefix (at most 16
    // characters). Empty when the query has no prefix keys or nothing was learned for it.
    std::map<std::string, double, std::less<>> habitBonuses(std::string_view query, WallTime now) const;

    // Records that `id` was executed after typing `query`: the entry gains 1 over its decayed weight, and
    // the group of each prefix of the query counts the id once more. A group that reaches 5 ids loses the
    // one with the lowest count, then the oldest, then the first in id order, never `id` itself. Then
    // prunes.
    void record(std::string_view id, std::string_view query, WallTime now);

    // The ids by current weight, highest first (ties in id order); at most `n`.
    std::vector<std::string> top(std::size_t n, WallTime now) const;

    // The keys of the query's prefixes of 1 ... 16 characters: the query folded case-, diacritic- and
    // width-insensitively with whitespace removed, each prefix HMAC-SHA256'd under `secret` and written
    // as 64 lowercase hex digits. Empty for a query with nothing but whitespace.
    std::vector<std::string> prefixKeys(std::string_view query) const;

    // Bounds the book: more than 600 entries keeps the 450 heaviest; more than 900 habit groups keeps the
    // 675 most recently used (an empty group counts as never used).
    void prune(WallTime now);

    // Keys "entries", "habits" and "secret" (base64); dates as Unix epoch seconds.
    nlohmann::json toJson() const;

    // None, never an exception, when `json` is not an object or has no valid 32-byte base64 "secret".
    // A missing "entries" or "habits" reads as empty; a malformed entry, group or habit (wrong types, a
    // negative weight or count, a date the clock cannot hold) is left out.
    static std::optional<CommandLearning> fromJson(const nlohmann::json& json);

    bool operator==(const CommandLearning&) const = default;
};

} // namespace quillmar
