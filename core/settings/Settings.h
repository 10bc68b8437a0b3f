#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include <nlohmann/json.hpp>

#include "core/settings/SettingKey.h"
#include "core/settings/SettingsBackend.h"

namespace quillmar {

// The user's settings: one dictionary under dotted lower-camel keys ("features.disabled"), saved through a
// backend after every change. Each owning object registers its defaults once; a typed read returns the saved
// value, else the registered default. A saved value of the wrong type (left by an older version or edited
// by hand) reads as the registered default, and as absent when there is none or it has the wrong type too;
// the saved value itself is left as it is. Safe from any thread.
class Settings final {
public:
    using ObserverId = std::uint64_t;
    using Observer = std::function<void(std::string_view key)>;

    // Loads at once. A store that cannot be used starts empty; when it could not even be kept aside,
    // nothing is saved for the rest of the run so that the user's file is never overwritten.
    explicit Settings(std::unique_ptr<SettingsBackend> backend);

    // Adds defaults from a JSON object (key to value); a later registration of the same key wins.
    void registerDefaults(const nlohmann::json& defaults);
    // Registers the declared defaults of `keys`, for the untyped readers (json(), the command line).
    template<typename... T>
    void registerDefaults(const SettingKey<T>&... keys)
    {
        auto defaults = nlohmann::json::object();
        ((defaults[std::string(keys.name)] = nlohmann::json(keys.defaultValue)), ...);
        registerDefaults(defaults);
    }

    // The saved value when it has the key's type, else the key's default.
    template<typename T>
    SettingValue<T> value(const SettingKey<T>& key) const
    {
        if (auto found = saved(key))
            return std::move(*found);
        return SettingValue<T>(key.defaultValue);
    }
    // The saved value when there is one of the key's type; defaults do not count.
    template<typename T>
    std::optional<SettingValue<T>> saved(const SettingKey<T>& key) const;
    // Saves `value` under the key, as set(std::string_view, nlohmann::json) does.
    template<typename T>
    void set(const SettingKey<T>& key, const std::type_identity_t<SettingValue<T>>& value)
    {
        set(key.name, nlohmann::json(value));
    }

    // True when a value is saved under `key` (registered defaults do not count).
    bool contains(std::string_view key) const;

    std::optional<bool> boolValue(std::string_view key) const;
    std::optional<std::int64_t> integer(std::string_view key) const;
    std::optional<double> number(std::string_view key) const;
    std::optional<std::string> string(std::string_view key) const;
    std::optional<std::vector<std::string>> stringArray(std::string_view key) const;
    // Any value, for records kept as nested JSON.
    std::optional<nlohmann::json> json(std::string_view key) const;

    // Saves `value` under `key` and tells the observers; a value equal to the saved one changes nothing.
    void set(std::string_view key, nlohmann::json value);
    void remove(std::string_view key);

    // Observers are called after a change, on the thread that made it, with the changed key.
    ObserverId observe(Observer observer);
    void removeObserver(ObserverId id);

    // Why the last save failed, if it did (the CLI reports it; the application logs it).
    std::optional<Error> lastSaveError() const;

private:
    std::optional<nlohmann::json> lookup(std::string_view key) const;
    // The saved value that `convert` accepts, else the registered default that it accepts.
    template<typename T>
    std::optional<T> typed(std::string_view key, std::optional<T> (*convert)(const nlohmann::json&)) const;
    void saveAndNotify(std::unique_lock<std::mutex>& lock, std::string_view key);

    std::unique_ptr<SettingsBackend> m_backend;
    mutable std::mutex m_mutex;
    nlohmann::json m_values = nlohmann::json::object();
    nlohmann::json m_defaults = nlohmann::json::object();
    std::vector<std::pair<ObserverId, Observer>> m_observers;
    ObserverId m_nextObserverId = 1;
    bool m_saveAllowed = true;
    std::optional<Error> m_lastSaveError;
};

} // namespace quillmar
