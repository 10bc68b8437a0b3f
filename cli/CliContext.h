#pragma once

#include <concepts>
#include <iosfwd>
#include <ostream>
#include <memory>
#include <string_view>

#include <nlohmann/json.hpp>

#include "cli/ExitCode.h"
#include "cli/JsonText.h"
#include "core/runtime/SystemRuntime.h"
#include "core/settings/FileLocations.h"
#include "core/settings/Settings.h"
#include "core/shell/AppServices.h"

namespace quillmar::cli {

// What every command shares: the output streams, the outcome, and the application's own state, opened
// on first use from where the application keeps it (so the CLI and the application see the same switches).
class CliContext final {
public:
    CliContext(std::istream& in, std::ostream& out, std::ostream& err, std::unique_ptr<FileLocations> locations);
    ~CliContext();

    std::ostream& out() { return m_out; }
    std::ostream& err() { return m_err; }
    // Standard input, for --batch and commands that read a document.
    std::istream& in() { return m_in; }

    // Whether standard error is a terminal a person watches (progress lines go there only then).
    bool errIsTerminal() const;

    // Prints one compact JSON object on one line (see jsonText: never throws on bytes that are not UTF-8).
    void printJson(const nlohmann::json& object);
    // The same, keys in the order they were added.
    template<typename Json>
        requires std::same_as<Json, nlohmann::ordered_json>
    void printJson(const Json& object)
    {
        m_out << jsonText(object) << '\n';
    }

    // A refusal or a usage error: one sentence on stderr, and the exit code to return.
    void refuse(std::string_view sentence);
    void usageError(std::string_view sentence);

    ExitCode exitCode() const { return m_exitCode; }
    void setExitCode(ExitCode code) { m_exitCode = code; }

    Settings& settings();
    AppServices& services();
    // The real runtime, for commands that wait on background work.
    Runtime& runtime() { return m_runtime; }
    // Its main queue, for commands that run until something stops them.
    EventLoop& eventLoop() { return m_runtime.eventLoop(); }
    // Where the application keeps its settings and stores (the CLI only reads the stores).
    const FileLocations& locations() const { return *m_locations; }

    // After a change: refuses with a sentence when the settings could not be saved. True when saved.
    bool confirmSaved();

private:
    std::ostream& m_out;
    std::ostream& m_err;
    std::istream& m_in;
    std::unique_ptr<FileLocations> m_locations;
    SystemRuntime m_runtime;
    std::unique_ptr<Settings> m_settings;
    std::unique_ptr<HotKeyRegistrar> m_registrar;
    std::unique_ptr<EventTapSource> m_events;
    std::unique_ptr<AppServices> m_services;
    ExitCode m_exitCode = ExitCode::done;
};

} // namespace quillmar::cli
