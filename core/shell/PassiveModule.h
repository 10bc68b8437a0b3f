#pragma once

#include "core/shell/FeatureModule.h"
#include "core/shell/ModuleID.h"

namespace quillmar {

// A module whose features need no running machinery (yet): it owns its features and settings pages,
// and its apply, perform and shutdown do nothing. Real modules replace it as their subsystems arrive.
class PassiveModule final : public FeatureModule {
public:
    explicit PassiveModule(ModuleID id) : m_id(id) { }

    std::string_view name() const override { return quillmar::name(m_id); }
    std::span<const FeatureID> features() const override { return ownedFeatures(m_id); }
    std::vector<PanelAction> panelActions() const override { return {}; }
    std::vector<FeatureID> settingsPages() const override { return { features().begin(), features().end() }; }
    void apply(const FeatureStore&) override { }
    bool perform(ShortcutAction) override { return false; }
    void settingsChanged() override { }
    void shutdown() override { }

private:
    ModuleID m_id;
};

} // namespace quillmar
