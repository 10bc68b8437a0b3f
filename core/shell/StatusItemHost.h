#pragma once

#include <functional>
#include <string_view>

namespace quillmar {

// The menu-bar item and its panel as the user interface shows them (port). The controller decides
// what a click does; the host only draws.
class StatusItemHost {
public:
    virtual ~StatusItemHost() = default;

    virtual bool isPanelVisible() const = 0;
    virtual void showPanel() = 0;
    virtual void hidePanel() = 0;
    // Installs what a click on the status item does.
    virtual void setClickAction(std::function<void()> action) = 0;
    // Opens the settings window on its first page, dropping any pending page selection.
    virtual void openSettingsOnFirstPage() = 0;
    // Posts an application-wide notification ("quillmarOpenSettings").
    virtual void postNotification(std::string_view name) = 0;
};

} // namespace quillmar
