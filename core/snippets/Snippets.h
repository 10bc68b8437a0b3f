#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/base/Result.h"
#include "core/desktop/FrontApplications.h"
#include "core/desktop/KeyboardLayout.h"
#include "core/desktop/Keystrokes.h"
#include "core/desktop/Pasteboard.h"
#include "core/desktop/TextFocus.h"
#include "core/desktop/UserNotices.h"
#include "core/eventtap/EventTap.h"
#include "core/runtime/LifetimeGuard.h"
#include "core/runtime/Runtime.h"
#include "core/settings/FileLocations.h"
#include "core/settings/Settings.h"
#include "core/shell/services/SnippetService.h"
#include "core/snippets/SnippetLibrary.h"
#include "core/snippets/SnippetMatcher.h"
#include "core/snippets/SnippetTyper.h"
#include "core/snippets/TextSnippet.h"
#include "core/snippets/TypedKeyBuffer.h"

namespace quillmar {

// The system side snippets work through. Every port must outlive the engine.
struct SnippetPorts {
    EventTap& eventTap;
    KeyboardLayout& keyboard;
    TextFocus& focus;
    FrontApplications& frontApplications;
    Pasteboard& pasteboard;
    Keystrokes& keystrokes;
    UserNotices& notices;
};

// The snippet library and text expansion. The library is stored in the export format in
// "Quillmar/Snippets.json" (written atomically after every change; one that cannot be read is kept aside
// and the library starts empty); the group order is the setting "files.snippets.groups". While enabled, a
// listen-only registration "snippets.typing" on the shared event tap feeds the typed-key buffer; a match
// expands on the main queue afterwards, never inside the tap's callback. Confined to the main thread.
class Snippets final : public SnippetService {
public:
    static constexpr const char* registrationName = "snippets.typing";
    static constexpr SettingKey<std::vector<std::string>> excludedAppsKey { "files.snippets.excludedApps", {} };
    static constexpr SettingKey<std::vector<std::string>> groupsKey { "files.snippets.groups", {} };
    static constexpr std::string_view excludedAppsHelp
        = "Triggers typed in these apps stay as typed. Password fields are always skipped.";
    static constexpr std::string_view secureInputPause
        = "A password field somewhere has secure typing on, so snippets pause until it closes.";

    // "Quillmar/Snippets.json" under the application-support folder.
    static std::filesystem::path libraryFile(const FileLocations& locations);

    Snippets(Runtime& runtime, Settings& settings, std::filesystem::path libraryFile, SnippetPorts ports);
    ~Snippets() override;

    Snippets(const Snippets&) = delete;
    Snippets& operator=(const Snippets&) = delete;

    // SnippetService: registers or removes the key watching; turning off empties the buffer.
    void setEnabled(bool on) override;
    bool isEnabled() const { return m_enabled; }

    const std::vector<TextSnippet>& snippets() const;
    const std::vector<std::string>& groups() const;

    // Adds a snippet (a fresh id when it has none or a taken one); an Error with the TriggerProblem's
    // message when the trigger cannot be used. Returns it as stored.
    Result<TextSnippet> add(TextSnippet snippet);
    // Replaces the snippet with the same id; the trigger is checked as in `add`.
    Result<void> update(const TextSnippet& snippet);
    // `delete(_:)`: removes the snippet with `id`; unknown ids change nothing.
    void remove(std::string_view id);
    // A copy right after the original with a fresh id and `uniqueTrigger` of its trigger.
    std::optional<TextSnippet> duplicate(std::string_view id);
    // `trigger` when no snippet uses it, else the trigger with the first free number from 2 on (a trailing
    // number is counted on: ";sig2" gives ";sig3"), shortened as needed to stay a valid length.
    std::string uniqueTrigger(std::string_view trigger) const;

    // False for a blank name or one that exists.
    bool addGroup(std::string_view name);
    // Renames the group and moves its snippets along; false when `from` is unknown or `to` blank or taken.
    bool renameGroup(std::string_view from, std::string_view to);
    // Its snippets stay, without a group.
    void deleteGroup(std::string_view name);
    // Moves the group `offset` places (negative: up), stopping at the ends.
    void moveGroup(std::string_view name, int offset);

    // Imports `incoming` (its groups after ours); see SnippetLibrary::merge.
    MergeResult merge(const SnippetLibraryFile& incoming, bool replaceConflicts);
    // The library in the export format.
    std::string exportLibrary() const;

    // Why snippets do not expand right now, for the menu; none while they do.
    std::optional<std::string> pauseReason() const { return m_pauseReason; }
    const TypedKeyBuffer& buffer() const { return m_buffer; }
    // Why the last save failed, if it did.
    std::optional<Error> lastSaveError() const { return m_lastSaveError; }

private:
    void assertMainThread() const;
    void load();
    void save();
    void setGroups(std::vector<std::string> groups);
    void handleEvent(const InputEvent& event);
    void expand(const TextSnippet& snippet, bool terminatedBySpace);

    Runtime& m_runtime;
    Settings& m_settings;
    std::filesystem::path m_file;
    SnippetPorts m_ports;
    SnippetTyper m_typer;
    std::vector<TextSnippet> m_snippets;
    std::vector<std::string> m_groups;
    TypedKeyBuffer m_buffer;
    bool m_enabled = false;
    bool m_saveAllowed = true;
    std::optional<std::string> m_pauseReason;
    std::optional<Error> m_lastSaveError;
    // Last: ends before anything else goes.
    LifetimeGuard m_guard;
};

} // namespace quillmar
