#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "core/shell/LoginItem.h"

namespace quillmar {

// Launching at login the freedesktop.org way: a desktop entry in the user's autostart folder,
// "$XDG_CONFIG_HOME/autostart/quillmar.desktop" (default ~/.config/autostart), that runs this program. Turning it
// off removes the entry; an entry marked Hidden=true (how a desktop's settings turn one off) counts as off.
class AutostartLoginItem final : public LoginItem {
public:
    // `entry` is the desktop file; `program` the absolute path of what it starts.
    AutostartLoginItem(std::filesystem::path entry, std::filesystem::path program);

    // The entry in the autostart folder of XDG_CONFIG_HOME (an absolute value, else HOME/.config) for the
    // running program (/proc/self/exe). An Error without either a usable XDG_CONFIG_HOME or HOME, or when the
    // program's path cannot be read.
    static Result<std::unique_ptr<AutostartLoginItem>> create();

    Result<bool> launchesAtLogin() const override;
    Result<void> setLaunchesAtLogin(bool on) override;

    const std::filesystem::path& entry() const { return m_entry; }

private:
    std::filesystem::path m_entry;
    std::filesystem::path m_program;
};

// The Exec value that runs `program` without arguments: the path quoted as one argument, `"`, `` ` ``, `$` and
// `\` escaped inside the quotes, `%` doubled, then escaped as a string value (so a backslash becomes four).
std::string desktopExecValue(const std::filesystem::path& program);

} // namespace quillmar
