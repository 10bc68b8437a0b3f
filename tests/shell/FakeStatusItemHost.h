#pragma once

#include <string>
#include <vector>

#include "core/shell/StatusItemHost.h"

namespace quillmar {

// Records what the controller asked of the user interface.
class FakeStatusItemHost final : public StatusItemHost {
public:
    bool isPanelVisible() const override { return visible; }
    void showPanel() override
    {
        visible = true;
        log.emplace_back("show");
    }
    void hidePanel() override
    {
        visible = false;
        log.emplace_back("hide");
    }
    void setClickAction(std::function<void()> action) override { click = std::move(action); }
    void openSettingsOnFirstPage() override { log.emplace_back("openSettingsOnFirstPage"); }
    void postNotification(std::string_view name) override { log.push_back("notify " + std::string(name)); }

    bool visible = false;
    std::function<void()> click;
    std::vector<std::string> log;
};

} // namespace quillmar
