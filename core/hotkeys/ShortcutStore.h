#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string_view>

#include <nlohmann/json.hpp>

#include "core/hotkeys/Shortcut.h"
#include "core/hotkeys/ShortcutAction.h"
#include "core/runtime/MainQueue.h"
#include "core/settings/Settings.h"

namespace quillmar {

// The bindings of the shortcut actions: every action's default, overlaid with the user's changes, saved
// under "shortcuts.bindings" after every change. Confined to the main thread: every member stops the
// process when called from elsewhere.
class ShortcutStore final {
public:
    // As encodeSaved() writes it; no changes by default.
    inline static const SettingKey<nlohmann::json> settingsKey { "shortcuts.bindings", nlohmann::json::object() };

    // What the settings hold for an action: a binding, or an explicit "no shortcut" (JSON null).
    using SavedBindings = std::map<ShortcutAction, std::optional<Shortcut>>;

    // Loads at once; `settings` and `mainQueue` must outlive the store.
    ShortcutStore(Settings& settings, const MainQueue& mainQueue);

    ShortcutStore(const ShortcutStore&) = delete;
    ShortcutStore& operator=(const ShortcutStore&) = delete;

    // Reads a saved dictionary from raw value to record or null. Never throws: anything but an object
    // reads as empty; an unknown raw value or a malformed record is left out, so that action keeps its
    // default.
    static SavedBindings decodeSaved(const nlohmann::json& saved);

    // The saved form of `bindings`: every bound action keyed by raw value, plus null for each action
    // that has a default but no binding, so that clearing a default survives a restart.
    static nlohmann::json encodeSaved(const std::map<ShortcutAction, Shortcut>& bindings);

    std::optional<Shortcut> shortcut(ShortcutAction action) const;

    // Bound actions only; an absent action has no shortcut.
    const std::map<ShortcutAction, Shortcut>& bindings() const;

    // Binds `shortcut` to `action`, or clears the binding for none; saves, then fires the change callback.
    // Setting the binding the action already has does nothing at all.
    void set(std::optional<Shortcut> shortcut, ShortcutAction action);

    // The first action in declaration order, other than `excluding`, bound to the same key combination.
    // Combinations compare by key code and modifiers: the label only shows the key, and the system knows
    // the hot key by the other two.
    std::optional<ShortcutAction> conflict(const Shortcut& shortcut, std::optional<ShortcutAction> excluding) const;

    // Every action back to its default; saves and fires the change callback.
    void resetAll();

    // Called on the main thread after every change (the service container re-registers the hot keys).
    void setChangeCallback(std::function<void()> callback);

private:
    static std::map<ShortcutAction, Shortcut> defaults();
    void saveAndNotify();

    Settings& m_settings;
    const MainQueue& m_mainQueue;
    std::map<ShortcutAction, Shortcut> m_bindings;
    std::function<void()> m_changeCallback;
};

} // namespace quillmar
