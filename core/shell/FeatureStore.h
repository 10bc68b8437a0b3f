#pragma once

#include <functional>

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

    static inline constexpr auto disabledKey = "features.disabled";
    static inline constexpr auto knownKey = "features.known";

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
