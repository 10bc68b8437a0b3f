#include "core/shell/Modules.h"

#include <algorithm>

#include "core/shell/PassiveModule.h"

namespace quillmar {

Modules::Modules(std::vector<std::unique_ptr<FeatureModule>> modules)
    : m_modules(std::move(modules))
{
    for (auto& module : m_modules)
        m_order.push_back(module.get());
}

Modules Modules::standard()
{
    std::vector<std::unique_ptr<FeatureModule>> modules;
    for (auto id : allModuleIDs)
        modules.push_back(std::make_unique<PassiveModule>(id));
    return Modules(std::move(modules));
}

FeatureModule* Modules::moduleOwning(FeatureID feature) const
{
    for (auto* module : m_order) {
        auto owned = module->features();
        if (std::find(owned.begin(), owned.end(), feature) != owned.end())
            return module;
    }
    return nullptr;
}

} // namespace quillmar
