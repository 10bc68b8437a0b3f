#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

namespace quillmar {

// One settings key, declared once with the type it holds and its default; every reader and writer goes
// through the declaration. The types are bool, std::int64_t, double, std::string_view (text, read back as
// std::string), std::vector<std::string> and nlohmann::json (records kept as nested JSON).
template<typename T>
struct SettingKey {
    std::string_view name;
    T defaultValue;
};

template<typename T>
struct SettingValueOf {
    using type = T;
};

template<>
struct SettingValueOf<std::string_view> {
    using type = std::string;
};

// What reading a key of type T gives: T itself, except that text is owned.
template<typename T>
using SettingValue = typename SettingValueOf<T>::type;

} // namespace quillmar
