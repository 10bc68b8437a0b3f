#pragma once

#include <memory>
#include <vector>

#include "core/shell/FeatureModule.h"

namespace quillmar {

// The feature modules in their fixed order; owned by the service container.
class Modules final {
public:
    explicit Modules(std::vector<std::unique_ptr<FeatureModule>> modules);

    // The eleven modules in order (Island, Capture, Command, Mixer, Windows, Input, Displays, Monitor,
    // Files, Apps, Tools), each a PassiveModule until its subsystem provides a real one.
    static Modules standard();

    const std::vector<FeatureModule*>& all() const { return m_order; }

    // The first module in order that lists `feature`, or none.
    FeatureModule* moduleOwning(FeatureID feature) const;

private:
    std::vector<std::unique_ptr<FeatureModule>> m_modules;
    std::vector<FeatureModule*> m_order;
};

} // namespace quillmar
