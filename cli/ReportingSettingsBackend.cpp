#include "cli/ReportingSettingsBackend.h"

#include <ostream>

#include <fmt/format.h>

namespace quillmar::cli {

ReportingSettingsBackend::ReportingSettingsBackend(std::unique_ptr<SettingsBackend> inner, std::ostream& err)
    : m_inner(std::move(inner))
    , m_err(err)
{
}

Result<nlohmann::json> ReportingSettingsBackend::load()
{
    auto loaded = m_inner->load();
    if (loaded)
        return loaded;
    if (loaded.error().code == "settings.setAside")
        m_err << fmt::format("The settings file couldn't be read, so it was kept as {} and the defaults are used.\n",
            loaded.error().context);
    else
        m_err << "The settings couldn't be read, so changes made now won't be saved.\n";
    return loaded;
}

Result<void> ReportingSettingsBackend::save(const nlohmann::json& values)
{
    return m_inner->save(values);
}

} // namespace quillmar::cli
