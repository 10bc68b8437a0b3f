#include "platform/linux/AutostartLoginItem.h"

#include <cstdlib>
#include <string_view>
#include <system_error>
#include <utility>

#include "core/base/Files.h"
#include "core/base/Text.h"

namespace quillmar {

namespace {

// Whether the entry's main group says Hidden=true. Keys of other groups (actions) do not count.
bool isHidden(std::string_view text)
{
    bool inMainGroup = false;
    while (!text.empty()) {
        auto end = text.find('\n');
        auto line = trimmed(text.substr(0, end));
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        if (line.empty() || line.front() == '#')
            continue;
        if (line.front() == '[') {
            inMainGroup = line == "[Desktop Entry]";
            continue;
        }
        auto equals = line.find('=');
        if (inMainGroup && equals != std::string_view::npos && trimmed(line.substr(0, equals)) == "Hidden")
            return trimmed(line.substr(equals + 1)) == "true";
    }
    return false;
}

std::string entryText(const std::filesystem::path& program)
{
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Quillmar\n"
           "Exec="
        + desktopExecValue(program)
        + "\n"
          "Terminal=false\n";
}

} // namespace

std::string desktopExecValue(const std::filesystem::path& program)
{
    std::string quoted = "\"";
    for (char character : program.string()) {
        if (character == '"' || character == '`' || character == '$' || character == '\\')
            quoted += '\\';
        quoted += character;
        // Field codes start with '%', so a literal one is doubled.
        if (character == '%')
            quoted += '%';
    }
    quoted += '"';

    std::string value;
    for (char character : quoted) {
        switch (character) {
        case '\\': value += "\\\\"; break;
        case '\n': value += "\\n"; break;
        case '\t': value += "\\t"; break;
        case '\r': value += "\\r"; break;
        default: value += character;
        }
    }
    return value;
}

AutostartLoginItem::AutostartLoginItem(std::filesystem::path entry, std::filesystem::path program)
    : m_entry(std::move(entry))
    , m_program(std::move(program))
{
}

Result<std::unique_ptr<AutostartLoginItem>> AutostartLoginItem::create()
{
    std::filesystem::path configHome;
    // A relative XDG value is ignored, as the XDG rules require.
    if (const char* xdg = std::getenv("XDG_CONFIG_HOME"); xdg && xdg[0] == '/')
        configHome = xdg;
    else if (const char* home = std::getenv("HOME"); home && home[0] != '\0')
        configHome = std::filesystem::path(home) / ".config";
    else
        return Error { "loginItem.noHome", "Quillmar can't find your home folder.", "HOME is not set" };

    std::error_code error;
    auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error)
        return Error { "loginItem.noProgram", "Quillmar can't find its own program file.", error.message() };
    return std::make_unique<AutostartLoginItem>(configHome / "autostart" / "quillmar.desktop", std::move(program));
}

Result<bool> AutostartLoginItem::launchesAtLogin() const
{
    auto text = readFile(m_entry);
    if (!text)
        return Error { "loginItem.unreadable", "Quillmar can't tell whether it opens at login.",
            text.error().context };
    return text->has_value() && !isHidden(**text);
}

Result<void> AutostartLoginItem::setLaunchesAtLogin(bool on)
{
    if (on) {
        auto written = writeFileAtomically(m_entry, entryText(m_program));
        if (!written)
            return Error { "loginItem.unwritable", "Quillmar couldn't be set to open at login.",
                written.error().context };
        return {};
    }
    std::error_code error;
    std::filesystem::remove(m_entry, error);
    if (error)
        return Error { "loginItem.unwritable", "Quillmar couldn't be kept from opening at login.",
            m_entry.string() + ": " + error.message() };
    return {};
}

} // namespace quillmar
