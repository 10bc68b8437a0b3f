#pragma once

#include <iosfwd>
#include <memory>

#include "core/settings/SettingsBackend.h"

namespace quillmar::cli {

// Passes everything to `inner` and tells the person at the terminal, in one sentence on `err`, when the
// saved settings could not be used: the command still runs, on the defaults.
class ReportingSettingsBackend final : public SettingsBackend {
public:
    ReportingSettingsBackend(std::unique_ptr<SettingsBackend> inner, std::ostream& err);

    Result<nlohmann::json> load() override;
    Result<void> save(const nlohmann::json& values) override;

private:
    std::unique_ptr<SettingsBackend> m_inner;
    std::ostream& m_err;
};

} // namespace quillmar::cli
