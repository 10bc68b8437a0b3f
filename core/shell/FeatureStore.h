#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/runtime/MainQueue.h"
#include "core/settings/Settings.h"
#include "core/shell/FeatureSet.h"

namespace quillmar {

// The one store of which features are on. Only the disabled features are persisted ("features.disabled",
// sorted raw values), together with the list of features this version knows ("features.known"), so that a
// feature added by an update arrives in its default state without touching earlier choices.
// Confined to the main thread: use from elsewhere stops the process.
class FeatureStore final {
public:
    using ChangeCallback = std::function<void(FeatureID feature, bool on)>;

    // Read only when saved: their absence is what tells a first launch and an older installation apart,
    // so the empty defaults are never used.
    static constexpr SettingKey<std::vector<std::string>> disabledKey { "features.disabled", {} };
    static constexpr SettingKey<std::vector<std::string>> knownKey { "features.known", {} };

    // The features that are off on a first launch.
    static FeatureSet offByDefault();
    // The features that were already off by default before "features.known" existed.
    static constexpr FeatureSet originalFeatures { FeatureID::mouseScroll, FeatureID::quitProtection };

    // Loads the switches from `settings` (running the migrations) and writes both lists back at once.
    FeatureStore(Settings& settings, const MainQueue& mainQueue);

    FeatureSet enabled() const;
    bool isEnabled(FeatureID feature) const;

    // Turns a feature on or off. A feature already in that state changes nothing: no write, no callback.
    // Otherwise writes "features.disabled" and then calls the change callback.
    void set(FeatureID feature, bool on);

    void setChangeCallback(ChangeCallback callback);

private:
    void writeDisabled();

    Settings& m_settings;
    const MainQueue& m_mainQueue;
    FeatureSet m_enabled;
    ChangeCallback m_changeCallback;
};

} // namespace quillmar
