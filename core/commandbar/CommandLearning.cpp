#include "core/commandbar/CommandLearning.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <openssl/evp.h>
#include <openssl/hmac.h>

#include "core/commandbar/CharacterFolder.h"
#include "core/commandbar/EpochTime.h"

namespace quillmar {

namespace {

constexpr std::string_view base64Alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string encodeBase64(std::span<const std::uint8_t> bytes)
{
    std::string text;
    for (std::size_t index = 0; index < bytes.size(); index += 3) {
        std::uint32_t group = std::uint32_t { bytes[index] } << 16;
        std::size_t count = std::min<std::size_t>(3, bytes.size() - index);
        if (count > 1)
            group |= std::uint32_t { bytes[index + 1] } << 8;
        if (count > 2)
            group |= bytes[index + 2];
        for (std::size_t digit = 0; digit < 4; ++digit) {
            if (digit <= count)
                text.push_back(base64Alphabet[(group >> (18 - 6 * digit)) & 0x3F]);
            else
                text.push_back('=');
        }
    }
    return text;
}

// Strict standard base64 with padding: anything else (whitespace, the URL alphabet, a wrong length) is none.
std::optional<std::vector<std::uint8_t>> decodeBase64(std::string_view text)
{
    if (text.size() % 4 != 0)
        return std::nullopt;
    std::vector<std::uint8_t> bytes;
    for (std::size_t index = 0; index < text.size(); index += 4) {
        std::uint32_t group = 0;
        std::size_t padding = 0;
        for (std::size_t digit = 0; digit < 4; ++digit) {
            char character = text[index + digit];
            group <<= 6;
            if (character == '=') {
                // Padding only at the very end, at most two.
                if (index + 4 != text.size() || digit < 2)
                    return std::nullopt;
                ++padding;
                continue;
            }
            if (padding > 0)
                return std::nullopt;
            auto value = base64Alphabet.find(character);
            if (value == std::string_view::npos)
                return std::nullopt;
            group |= static_cast<std::uint32_t>(value);
        }
        bytes.push_back(static_cast<std::uint8_t>(group >> 16));
        if (padding < 2)
            bytes.push_back(static_cast<std::uint8_t>(group >> 8));
        if (padding < 1)
            bytes.push_back(static_cast<std::uint8_t>(group));
    }
    return bytes;
}

std::string hexOf(std::span<const std::uint8_t> bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    text.reserve(bytes.size() * 2);
    for (auto byte : bytes) {
        text.push_back(digits[byte >> 4]);
        text.push_back(digits[byte & 0x0F]);
    }
    return text;
}

CharacterFolder& threadFolder()
{
    thread_local CharacterFolder folder;
    return folder;
}

// 2^(-age / halfLife), with an age below zero (a date ahead of `now`) counted as zero.
double decay(WallTime since, WallTime now, double halfLife)
{
    double age = std::max(secondsBetween(since, now), 0.0);
    return std::exp2(-age / halfLife);
}

void increment(std::int64_t& count)
{
    if (count < std::numeric_limits<std::int64_t>::max())
        ++count;
}

std::optional<std::int64_t> count(const nlohmann::json& value)
{
    if (value.is_number_unsigned()) {
        auto number = value.get<std::uint64_t>();
        if (number > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
            return std::nullopt;
        return static_cast<std::int64_t>(number);
    }
    if (value.is_number_integer() && value.get<std::int64_t>() >= 0)
        return value.get<std::int64_t>();
    return std::nullopt;
}

std::optional<WallTime> date(const nlohmann::json& value)
{
    if (!value.is_number())
        return std::nullopt;
    return wallTimeFromEpochSeconds(value.get<double>());
}

std::optional<CommandLearning::Entry> entryFromJson(const nlohmann::json& json)
{
    if (!json.is_object())
        return std::nullopt;
    auto weight = json.find("weight");
    auto updated = json.find("updated");
    auto uses = json.find("uses");
    if (weight == json.end() || updated == json.end() || uses == json.end() || !weight->is_number())
        return std::nullopt;
    double weightValue = weight->get<double>();
    auto updatedValue = date(*updated);
    auto usesValue = count(*uses);
    if (!std::isfinite(weightValue) || weightValue < 0 || !updatedValue || !usesValue)
        return std::nullopt;
    return CommandLearning::Entry { weightValue, *updatedValue, *usesValue };
}

std::optional<CommandLearning::Habit> habitFromJson(const nlohmann::json& json)
{
    if (!json.is_object())
        return std::nullopt;
    auto countValue = json.find("count");
    auto last = json.find("last");
    if (countValue == json.end() || last == json.end())
        return std::nullopt;
    auto value = count(*countValue);
    auto lastValue = date(*last);
    if (!value || !lastValue)
        return std::nullopt;
    return CommandLearning::Habit { *value, *lastValue };
}

} // namespace

Result<CommandLearning> CommandLearning::create(RandomSource& random)
{
    CommandLearning book;
    QUILLMAR_TRY(random.fill(book.secret));
    return book;
}

double CommandLearning::weight(std::string_view id, WallTime now) const
{
    auto found = entries.find(id);
    if (found == entries.end())
        return 0;
    return found->second.weight * decay(found->second.updated, now, entryHalfLifeSeconds);
}

std::vector<std::string> CommandLearning::prefixKeys(std::string_view query) const
{
    auto& folder = threadFolder();
    auto folded = folder.foldLoosely(query);
    auto characters = folder.split(folded);
    std::vector<std::string> keys;
    std::size_t count = std::min(characters.size(), maxPrefixCharacters);
    keys.reserve(count);
    for (std::size_t length = 1; length <= count; ++length) {
        std::uint8_t code[EVP_MAX_MD_SIZE];
        unsigned int codeLength = 0;
        HMAC(EVP_sha256(), secret.data(), static_cast<int>(secret.size()),
            reinterpret_cast<const unsigned char*>(folded.data()), characters[length - 1].end, code, &codeLength);
        keys.push_back(hexOf({ code, codeLength }));
    }
    return keys;
}

std::map<std::string, double, std::less<>> CommandLearning::habitBonuses(std::string_view query, WallTime now) const
{
    std::map<std::string, double, std::less<>> bonuses;
    if (habits.empty())
        return bonuses;
    auto keys = prefixKeys(query);
    if (keys.empty())
        return bonuses;
    auto group = habits.find(keys.back());
    if (group == habits.end())
        return bonuses;
    double total = 0;
    for (const auto& [id, habit] : group->second)
        total += static_cast<double>(habit.count);
    total = std::max(total, 1.0);
    // Longer prefixes say more about what the user means.
    double confidence = std::min(0.55 + 0.15 * static_cast<double>(keys.size()), 1.0);
    for (const auto& [id, habit] : group->second) {
        double count = static_cast<double>(habit.count);
        double share = count / total * 0.6 * std::min(0.5 * count, 1.0);
        double fading = std::max(decay(habit.last, now, habitHalfLifeSeconds), habitDecayFloor);
        bonuses.emplace(id, confidence * share * fading);
    }
    return bonuses;
}

void CommandLearning::record(std::string_view id, std::string_view query, WallTime now)
{
    double decayed = weight(id, now);
    auto& entry = entries[std::string(id)];
    entry.weight = decayed + 1;
    entry.updated = now;
    increment(entry.uses);

    for (auto& key : prefixKeys(query)) {
        auto& group = habits[std::move(key)];
        auto& habit = group[std::string(id)];
        increment(habit.count);
        habit.last = now;
        while (group.size() > maxGroupIds) {
            auto victim = group.end();
            for (auto candidate = group.begin(); candidate != group.end(); ++candidate) {
                if (candidate->first == id)
                    continue;
                if (victim == group.end() || candidate->second.count < victim->second.count
                    || (candidate->second.count == victim->second.count && candidate->second.last < victim->second.last))
                    victim = candidate;
            }
            group.erase(victim);
        }
    }
    prune(now);
}

std::vector<std::string> CommandLearning::top(std::size_t n, WallTime now) const
{
    std::vector<std::pair<double, const std::string*>> weighted;
    weighted.reserve(entries.size());
    for (const auto& [id, entry] : entries)
        weighted.emplace_back(weight(id, now), &id);
    // The map is in id order and the sort is stable, so equal weights stay in id order.
    std::stable_sort(weighted.begin(), weighted.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
    std::vector<std::string> ids;
    for (std::size_t index = 0; index < std::min(n, weighted.size()); ++index)
        ids.push_back(*weighted[index].second);
    return ids;
}

void CommandLearning::prune(WallTime now)
{
    if (entries.size() > entryLimit) {
        decltype(entries) kept;
        for (auto& id : top(entryKeep, now))
            kept.insert(entries.extract(id));
        entries = std::move(kept);
    }
    if (habits.size() > groupLimit) {
        std::vector<std::pair<WallTime, const std::string*>> recency;
        recency.reserve(habits.size());
        for (const auto& [key, group] : habits) {
            auto newest = WallTime::min();
            for (const auto& [id, habit] : group)
                newest = std::max(newest, habit.last);
            recency.emplace_back(newest, &key);
        }
        std::stable_sort(recency.begin(), recency.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
        decltype(habits) kept;
        for (std::size_t index = 0; index < groupKeep; ++index)
            kept.insert(habits.extract(*recency[index].second));
        habits = std::move(kept);
    }
}

nlohmann::json CommandLearning::toJson() const
{
    auto entriesJson = nlohmann::json::object();
    for (const auto& [id, entry] : entries)
        entriesJson[id] = { { "weight", entry.weight }, { "updated", epochSeconds(entry.updated) }, { "uses", entry.uses } };
    auto habitsJson = nlohmann::json::object();
    for (const auto& [key, group] : habits) {
        auto groupJson = nlohmann::json::object();
        for (const auto& [id, habit] : group)
            groupJson[id] = { { "count", habit.count }, { "last", epochSeconds(habit.last) } };
        habitsJson[key] = std::move(groupJson);
    }
    return { { "entries", std::move(entriesJson) }, { "habits", std::move(habitsJson) }, { "secret", encodeBase64(secret) } };
}

std::optional<CommandLearning> CommandLearning::fromJson(const nlohmann::json& json)
{
    if (!json.is_object())
        return std::nullopt;
    auto secretJson = json.find("secret");
    if (secretJson == json.end() || !secretJson->is_string())
        return std::nullopt;
    auto secretBytes = decodeBase64(secretJson->get_ref<const std::string&>());
    CommandLearning book;
    if (!secretBytes || secretBytes->size() != book.secret.size())
        return std::nullopt;
    std::copy(secretBytes->begin(), secretBytes->end(), book.secret.begin());

    if (auto entriesJson = json.find("entries"); entriesJson != json.end() && entriesJson->is_object()) {
        for (const auto& [id, entryJson] : entriesJson->items()) {
            if (auto entry = entryFromJson(entryJson))
                book.entries.emplace(id, *entry);
        }
    }
    if (auto habitsJson = json.find("habits"); habitsJson != json.end() && habitsJson->is_object()) {
        for (const auto& [key, groupJson] : habitsJson->items()) {
            if (!groupJson.is_object())
                continue;
            HabitGroup group;
            for (const auto& [id, habitJson] : groupJson.items()) {
                if (auto habit = habitFromJson(habitJson))
                    group.emplace(id, *habit);
            }
            book.habits.emplace(key, std::move(group));
        }
    }
    return book;
}

} // namespace quillmar
