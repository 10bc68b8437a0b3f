#include "core/shell/FeatureStore.h"

#include <algorithm>
#include <string>

namespace quillmar {

namespace {

FeatureSet featuresNamed(const std::vector<std::string>& rawValues)
{
    FeatureSet set;
    for (const auto& raw : rawValues) {
        if (auto feature = featureFromRawValue(raw))
            set.insert(*feature);
    }
    return set;
}

} // namespace

FeatureSet FeatureStore::offByDefault()
{
    FeatureSet set;
    for (auto feature : allFeatures()) {
        if (!info(feature).onByDefault)
            set.insert(feature);
    }
    return set;
}

FeatureStore::FeatureStore(Settings& settings, const MainQueue& mainQueue)
    : m_settings(settings)
    , m_mainQueue(mainQueue)
{
    m_mainQueue.assertMainThread("feature store");

    const auto offDefaults = offByDefault();
    auto savedDisabled = m_settings.saved(disabledKey);
    FeatureSet disabled = savedDisabled ? featuresNamed(*savedDisabled) : offDefaults;

    if (auto known = m_settings.saved(knownKey)) {
        // A feature this installation has not seen yet arrives in its default state.
        for (auto feature : allFeatures()) {
            bool seen = std::find(known->begin(), known->end(), rawValue(feature)) != known->end();
            if (!seen && offDefaults.contains(feature))
                disabled.insert(feature);
        }
    } else if (savedDisabled) {
        // Installed before the known list existed: only the original off-by-default features were offered
        // then, so every later one arrives off.
        disabled |= offDefaults - originalFeatures;
    }

    m_enabled = FeatureSet::all() - disabled;

    writeDisabled();
    std::vector<std::string> known;
    for (auto feature : allFeatures())
        known.emplace_back(rawValue(feature));
    m_settings.set(knownKey, known);
}

FeatureSet FeatureStore::enabled() const
{
    m_mainQueue.assertMainThread("feature store");
    return m_enabled;
}

bool FeatureStore::isEnabled(FeatureID feature) const
{
    m_mainQueue.assertMainThread("feature store");
    return m_enabled.contains(feature);
}

void FeatureStore::set(FeatureID feature, bool on)
{
    m_mainQueue.assertMainThread("feature store");
    if (m_enabled.contains(feature) == on)
        return;
    if (on)
        m_enabled.insert(feature);
    else
        m_enabled.erase(feature);
    writeDisabled();
    if (m_changeCallback)
        m_changeCallback(feature, on);
}

void FeatureStore::setChangeCallback(ChangeCallback callback)
{
    m_mainQueue.assertMainThread("feature store");
    m_changeCallback = std::move(callback);
}

void FeatureStore::writeDisabled()
{
    std::vector<std::string> disabled;
    for (auto feature : (FeatureSet::all() - m_enabled).members())
        disabled.emplace_back(rawValue(feature));
    std::sort(disabled.begin(), disabled.end());
    m_settings.set(disabledKey, disabled);
}

} // namespace quillmar
