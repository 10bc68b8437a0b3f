#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "core/hotkeys/ShortcutAction.h"
#include "core/shell/FeatureID.h"
#include "core/shell/PanelAction.h"

namespace quillmar {

class FeatureStore;

// What every feature module does. Modules never call each other; the container drives them, on the
// main thread: `apply` after every switch change, `shutdown` once at quit.
class FeatureModule {
public:
    virtual ~FeatureModule() = default;

    // The module's name ("Island", "Capture", ...), for diagnostics.
    virtual std::string_view name() const = 0;

    // The features the module owns.
    virtual std::span<const FeatureID> features() const = 0;

    // What the module contributes to the quick panel.
    virtual std::vector<PanelAction> panelActions() const = 0;

    // The features whose settings pages the module provides, in page order.
    virtual std::vector<FeatureID> settingsPages() const = 0;

    // Brings the module's running machinery into line with the switches and its preferences.
    virtual void apply(const FeatureStore& features) = 0;

    // Runs one of the module's shortcut actions; false when the action is not the module's.
    virtual bool perform(ShortcutAction action) = 0;

    // The module's preferences changed.
    virtual void settingsChanged() = 0;

    // Releases everything before the process ends.
    virtual void shutdown() = 0;
};

} // namespace quillmar
