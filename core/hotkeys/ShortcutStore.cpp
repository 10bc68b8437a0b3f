#include "core/hotkeys/ShortcutStore.h"

#include <string>

namespace quillmar {

namespace {

constexpr std::string_view who = "ShortcutStore";

} // namespace

ShortcutStore::ShortcutStore(Settings& settings, const MainQueue& mainQueue)
    : m_settings(settings)
    , m_mainQueue(mainQueue)
    , m_bindings(defaults())
{
    m_mainQueue.assertMainThread(who);
    m_settings.registerDefaults(settingsKey);
    for (auto& [action, shortcut] : decodeSaved(m_settings.value(settingsKey))) {
        if (shortcut)
            m_bindings.insert_or_assign(action, std::move(*shortcut));
        else
            m_bindings.erase(action);
    }
}

std::map<ShortcutAction, Shortcut> ShortcutStore::defaults()
{
    std::map<ShortcutAction, Shortcut> bindings;
    for (auto action : allShortcutActions()) {
        if (auto shortcut = defaultShortcut(action))
            bindings.emplace(action, std::move(*shortcut));
    }
    return bindings;
}

ShortcutStore::SavedBindings ShortcutStore::decodeSaved(const nlohmann::json& saved)
{
    SavedBindings decoded;
    if (!saved.is_object())
        return decoded;
    for (const auto& [raw, record] : saved.items()) {
        auto action = shortcutActionFromRawValue(raw);
        if (!action)
            continue;
        if (record.is_null()) {
            decoded.insert_or_assign(*action, std::nullopt);
            continue;
        }
        if (auto shortcut = Shortcut::fromJson(record))
            decoded.insert_or_assign(*action, std::move(*shortcut));
    }
    return decoded;
}

nlohmann::json ShortcutStore::encodeSaved(const std::map<ShortcutAction, Shortcut>& bindings)
{
    auto encoded = nlohmann::json::object();
    for (auto action : allShortcutActions()) {
        auto key = std::string(rawValue(action));
        if (auto found = bindings.find(action); found != bindings.end())
            encoded[key] = found->second.toJson();
        else if (defaultShortcut(action))
            encoded[key] = nullptr;
    }
    return encoded;
}

std::optional<Shortcut> ShortcutStore::shortcut(ShortcutAction action) const
{
    m_mainQueue.assertMainThread(who);
    if (auto found = m_bindings.find(action); found != m_bindings.end())
        return found->second;
    return std::nullopt;
}

const std::map<ShortcutAction, Shortcut>& ShortcutStore::bindings() const
{
    m_mainQueue.assertMainThread(who);
    return m_bindings;
}

void ShortcutStore::set(std::optional<Shortcut> shortcut, ShortcutAction action)
{
    m_mainQueue.assertMainThread(who);
    auto found = m_bindings.find(action);
    if (!shortcut) {
        if (found == m_bindings.end())
            return;
        m_bindings.erase(found);
    } else {
        if (found != m_bindings.end() && found->second == *shortcut)
            return;
        m_bindings.insert_or_assign(action, std::move(*shortcut));
    }
    saveAndNotify();
}

std::optional<ShortcutAction> ShortcutStore::conflict(const Shortcut& shortcut,
    std::optional<ShortcutAction> excluding) const
{
    m_mainQueue.assertMainThread(who);
    for (auto action : allShortcutActions()) {
        if (action == excluding)
            continue;
        auto found = m_bindings.find(action);
        if (found == m_bindings.end())
            continue;
        if (found->second.keyCode == shortcut.keyCode && found->second.modifiers == shortcut.modifiers)
            return action;
    }
    return std::nullopt;
}

void ShortcutStore::resetAll()
{
    m_mainQueue.assertMainThread(who);
    m_bindings = defaults();
    saveAndNotify();
}

void ShortcutStore::setChangeCallback(std::function<void()> callback)
{
    m_mainQueue.assertMainThread(who);
    m_changeCallback = std::move(callback);
}

void ShortcutStore::saveAndNotify()
{
    m_settings.set(settingsKey, encodeSaved(m_bindings));
    // A copy, so that a callback which installs another callback does not destroy itself while it runs.
    if (auto callback = m_changeCallback)
        callback();
}

} // namespace quillmar
