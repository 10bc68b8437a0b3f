#include "core/settings/Settings.h"

#include "core/base/Diagnostics.h"

namespace quillmar {

Settings::Settings(std::unique_ptr<SettingsBackend> backend)
    : m_backend(std::move(backend))
{
    auto loaded = m_backend->load();
    if (loaded) {
        m_values = std::move(loaded).value();
        return;
    }
    if (loaded.error().code != "settings.setAside") {
        m_saveAllowed = false;
        diagnostic("settings: {} ({}); changes will not be saved in this run", loaded.error().message,
            loaded.error().context);
    }
}

void Settings::registerDefaults(const nlohmann::json& defaults)
{
    if (!defaults.is_object())
        return;
    std::lock_guard lock(m_mutex);
    for (const auto& [key, value] : defaults.items())
        m_defaults[key] = value;
}

std::optional<nlohmann::json> Settings::lookup(std::string_view key) const
{
    std::lock_guard lock(m_mutex);
    auto keyString = std::string(key);
    if (auto found = m_values.find(keyString); found != m_values.end())
        return *found;
    if (auto found = m_defaults.find(keyString); found != m_defaults.end())
        return *found;
    return std::nullopt;
}

template<typename T>
std::optional<T> Settings::typed(std::string_view key, std::optional<T> (*convert)(const nlohmann::json&)) const
{
    std::lock_guard lock(m_mutex);
    auto keyString = std::string(key);
    if (auto found = m_values.find(keyString); found != m_values.end()) {
        if (auto value = convert(*found))
            return value;
    }
    if (auto found = m_defaults.find(keyString); found != m_defaults.end())
        return convert(*found);
    return std::nullopt;
}

namespace {

std::optional<bool> asBool(const nlohmann::json& value)
{
    if (!value.is_boolean())
        return std::nullopt;
    return value.get<bool>();
}

std::optional<std::int64_t> asInteger(const nlohmann::json& value)
{
    if (!value.is_number_integer())
        return std::nullopt;
    if (value.is_number_unsigned() && value.get<std::uint64_t>() > static_cast<std::uint64_t>(INT64_MAX))
        return std::nullopt;
    return value.get<std::int64_t>();
}

std::optional<double> asNumber(const nlohmann::json& value)
{
    if (!value.is_number())
        return std::nullopt;
    return value.get<double>();
}

std::optional<std::string> asString(const nlohmann::json& value)
{
    if (!value.is_string())
        return std::nullopt;
    return value.get<std::string>();
}

std::optional<std::vector<std::string>> asStringArray(const nlohmann::json& value)
{
    if (!value.is_array())
        return std::nullopt;
    std::vector<std::string> strings;
    strings.reserve(value.size());
    for (const auto& element : value) {
        if (!element.is_string())
            return std::nullopt;
        strings.push_back(element.get<std::string>());
    }
    return strings;
}

template<typename T>
std::optional<T> converted(const nlohmann::json& value)
{
    if constexpr (std::is_same_v<T, bool>)
        return asBool(value);
    else if constexpr (std::is_same_v<T, std::int64_t>)
        return asInteger(value);
    else if constexpr (std::is_same_v<T, double>)
        return asNumber(value);
    else if constexpr (std::is_same_v<T, std::string>)
        return asString(value);
    else if constexpr (std::is_same_v<T, std::vector<std::string>>)
        return asStringArray(value);
    else
        return value;
}

} // namespace

template<typename T>
std::optional<SettingValue<T>> Settings::saved(const SettingKey<T>& key) const
{
    std::lock_guard lock(m_mutex);
    auto found = m_values.find(std::string(key.name));
    if (found == m_values.end())
        return std::nullopt;
    return converted<SettingValue<T>>(*found);
}

template std::optional<bool> Settings::saved(const SettingKey<bool>&) const;
template std::optional<std::int64_t> Settings::saved(const SettingKey<std::int64_t>&) const;
template std::optional<double> Settings::saved(const SettingKey<double>&) const;
template std::optional<std::string> Settings::saved(const SettingKey<std::string_view>&) const;
template std::optional<std::vector<std::string>> Settings::saved(const SettingKey<std::vector<std::string>>&) const;
template std::optional<nlohmann::json> Settings::saved(const SettingKey<nlohmann::json>&) const;

bool Settings::contains(std::string_view key) const
{
    std::lock_guard lock(m_mutex);
    return m_values.contains(std::string(key));
}

std::optional<bool> Settings::boolValue(std::string_view key) const
{
    return typed(key, asBool);
}

std::optional<std::int64_t> Settings::integer(std::string_view key) const
{
    return typed(key, asInteger);
}

std::optional<double> Settings::number(std::string_view key) const
{
    return typed(key, asNumber);
}

std::optional<std::string> Settings::string(std::string_view key) const
{
    return typed(key, asString);
}

std::optional<std::vector<std::string>> Settings::stringArray(std::string_view key) const
{
    return typed(key, asStringArray);
}

std::optional<nlohmann::json> Settings::json(std::string_view key) const
{
    return lookup(key);
}

void Settings::set(std::string_view key, nlohmann::json value)
{
    std::unique_lock lock(m_mutex);
    auto keyString = std::string(key);
    if (auto found = m_values.find(keyString); found != m_values.end() && *found == value)
        return;
    m_values[keyString] = std::move(value);
    saveAndNotify(lock, key);
}

void Settings::remove(std::string_view key)
{
    std::unique_lock lock(m_mutex);
    if (m_values.erase(std::string(key)) == 0)
        return;
    saveAndNotify(lock, key);
}

void Settings::saveAndNotify(std::unique_lock<std::mutex>& lock, std::string_view key)
{
    if (m_saveAllowed) {
        auto saved = m_backend->save(m_values);
        if (saved) {
            m_lastSaveError.reset();
        } else {
            m_lastSaveError = saved.error();
            diagnostic("settings: could not save \"{}\" ({})", key, saved.error().context);
        }
    }
    auto observers = m_observers;
    lock.unlock();
    for (const auto& [id, observer] : observers)
        observer(key);
}

Settings::ObserverId Settings::observe(Observer observer)
{
    std::lock_guard lock(m_mutex);
    auto id = m_nextObserverId++;
    m_observers.emplace_back(id, std::move(observer));
    return id;
}

void Settings::removeObserver(ObserverId id)
{
    std::lock_guard lock(m_mutex);
    std::erase_if(m_observers, [id](const auto& entry) { return entry.first == id; });
}

std::optional<Error> Settings::lastSaveError() const
{
    std::lock_guard lock(m_mutex);
    return m_lastSaveError;
}

} // namespace quillmar
