#include "cli/CliContext.h"

#include <unistd.h>

#include <iostream>

#include <fmt/format.h>

#include "cli/ReportingSettingsBackend.h"
#include "core/settings/JsonFileSettingsBackend.h"
#include "platform/null/NullEventTapPorts.h"
#include "platform/null/NullHotKeyPorts.h"

namespace quillmar::cli {

CliContext::CliContext(std::istream& in, std::ostream& out, std::ostream& err, std::unique_ptr<FileLocations> locations)
    : m_out(out)
    , m_err(err)
    , m_in(in)
    , m_locations(std::move(locations))
{
}

CliContext::~CliContext() = default;

bool CliContext::errIsTerminal() const
{
    return &m_err == &std::cerr && ::isatty(STDERR_FILENO) == 1;
}

void CliContext::printJson(const nlohmann::json& object)
{
    m_out << jsonText(object) << '\n';
}

void CliContext::refuse(std::string_view sentence)
{
    m_err << sentence << '\n';
    m_exitCode = ExitCode::noAnswer;
}

void CliContext::usageError(std::string_view sentence)
{
    m_err << sentence << '\n';
    m_exitCode = ExitCode::usage;
}

Settings& CliContext::settings()
{
    if (!m_settings) {
        m_settings = std::make_unique<Settings>(std::make_unique<ReportingSettingsBackend>(
            std::make_unique<JsonFileSettingsBackend>(m_locations->settingsFile(), m_runtime.clock()), m_err));
    }
    return *m_settings;
}

AppServices& CliContext::services()
{
    if (!m_services) {
        // The CLI never registers hot keys: it only reports what the application would register.
        m_registrar = std::make_unique<NullHotKeyRegistrar>();
        m_events = std::make_unique<NullEventTapSource>();
        m_services = std::make_unique<AppServices>(m_runtime, settings(),
            AppServices::SystemPorts { *m_registrar, *m_events }, ShellServices {}, Modules::standard());
    }
    return *m_services;
}

bool CliContext::confirmSaved()
{
    if (auto error = settings().lastSaveError()) {
        refuse(fmt::format("The settings couldn't be saved to {}.", m_locations->settingsFile().string()));
        return false;
    }
    return true;
}

} // namespace quillmar::cli
