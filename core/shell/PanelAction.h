#pragma once

#include <string>

namespace quillmar {

// One button a module offers on the quick panel: what it shows and the action reference it runs
// ("shortcut.clipboardPicker" runs that shortcut's action).
struct PanelAction {
    std::string title;
    std::string symbol;
    std::string reference;
};

} // namespace quillmar
