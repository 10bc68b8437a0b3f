#include "core/snippets/Snippets.h"

#include <algorithm>
#include <charconv>

#include <fmt/format.h>

#include "core/base/Diagnostics.h"
#include "core/base/Files.h"
#include "core/base/UtcStamp.h"
#include "core/base/Utf8.h"
#include "core/base/Uuid.h"
#include "core/snippets/Graphemes.h"
#include "core/snippets/SnippetVariables.h"

namespace quillmar {

namespace {

constexpr std::string_view who = "Snippets";

std::string trimmedName(std::string_view name)
{
    auto isSpace = [](char character) { return character == ' ' || character == '\t' || character == '\n' || character == '\r'; };
    while (!name.empty() && isSpace(name.front()))
        name.remove_prefix(1);
    while (!name.empty() && isSpace(name.back()))
        name.remove_suffix(1);
    return std::string(name);
}

} // namespace

std::filesystem::path Snippets::libraryFile(const FileLocations& locations)
{
    return locations.applicationSupport() / "Snippets.json";
}

Snippets::Snippets(Runtime& runtime, Settings& settings, std::filesystem::path libraryFile, SnippetPorts ports)
    : m_runtime(runtime)
    , m_settings(settings)
    , m_file(std::move(libraryFile))
    , m_ports(ports)
    , m_typer(runtime.mainQueue(), ports.pasteboard, ports.keystrokes, ports.focus, ports.notices)
{
    assertMainThread();
    m_settings.registerDefaults(excludedAppsKey, groupsKey);
    load();
}

Snippets::~Snippets()
{
    assertMainThread();
    if (m_enabled)
        m_ports.eventTap.unregister(registrationName);
    m_guard.end();
}

void Snippets::assertMainThread() const
{
    m_runtime.mainQueue().assertMainThread(who);
}

void Snippets::load()
{
    // Saved groups win over the library's, even when they cannot be read.
    std::optional<std::vector<std::string>> stored;
    if (m_settings.contains(groupsKey.name))
        stored = m_settings.value(groupsKey);
    auto text = readFile(m_file);
    if (!text) {
        m_saveAllowed = false;
        diagnostic("snippets: cannot read {} ({}); changes not saved in this run", m_file.string(), text.error().context);
    } else if (*text) {
        auto library = SnippetLibrary::read(**text);
        if (library) {
            m_snippets = std::move(library->snippets);
            if (!stored)
                stored = std::move(library->groups);
        } else {
            auto kept = moveAside(m_file, utcStamp(m_runtime.clock().now()));
            if (kept) {
                diagnostic("snippets: {} is not a snippet library; kept it as {} and started empty", m_file.filename().string(),
                    kept->filename().string());
            } else {
                m_saveAllowed = false;
                diagnostic("snippets: cannot keep unreadable {} aside; changes not saved in this run", m_file.string());
            }
        }
    }
    m_groups = stored.value_or(std::vector<std::string> {});
    // A group that a snippet names but the order lacks goes last, so that no snippet is hidden.
    for (const auto& snippet : m_snippets) {
        if (!snippet.group.empty() && std::find(m_groups.begin(), m_groups.end(), snippet.group) == m_groups.end())
            m_groups.push_back(snippet.group);
    }
}

void Snippets::save()
{
    if (!m_saveAllowed)
        return;
    auto written = writeFileAtomically(m_file, SnippetLibrary::encode({ m_snippets, m_groups }));
    if (written) {
        m_lastSaveError.reset();
        return;
    }
    m_lastSaveError = written.error();
    diagnostic("snippets: could not save {} ({})", m_file.filename().string(), written.error().context);
}

void Snippets::setGroups(std::vector<std::string> groups)
{
    m_groups = std::move(groups);
    m_settings.set(groupsKey, m_groups);
}

void Snippets::setEnabled(bool on)
{
    assertMainThread();
    if (on == m_enabled)
        return;
    m_enabled = on;
    m_buffer.reset();
    if (!on) {
        m_ports.eventTap.unregister(registrationName);
        return;
    }
    m_ports.eventTap.registerHandler(registrationName,
        { EventType::keyDown, EventType::leftMouseDown, EventType::rightMouseDown, EventType::otherMouseDown },
        ListenOnly::yes, [this, token = m_guard.token()](const InputEvent& event) -> std::optional<InputEvent> {
            if (token.isAlive())
                handleEvent(event);
            return event;
        });
}

const std::vector<TextSnippet>& Snippets::snippets() const
{
    assertMainThread();
    return m_snippets;
}

const std::vector<std::string>& Snippets::groups() const
{
    assertMainThread();
    return m_groups;
}

void Snippets::handleEvent(const InputEvent& event)
{
    // Our own Delete, ⌘V and arrow presses must not feed the buffer.
    if (event.sourceUserData == ownEventUserData)
        return;
    if (event.type != EventType::keyDown) {
        if (!m_ports.focus.isOnScreenKeyboard(event.location))
            m_buffer.reset();
        return;
    }
    bool producesText = (event.flags & (EventFlags::command | EventFlags::control)) == 0 && event.keyCode != TypedKeyBuffer::deleteKeyCode;
    auto characters = producesText ? m_ports.keyboard.characters(event) : std::string();
    if (m_buffer.keyDown(event.keyCode, event.flags, characters) != TypedKeyBuffer::Change::appended)
        return;
    auto found = SnippetMatcher::match(std::u32string_view(m_buffer.text()), m_snippets);
    if (!found)
        return;
    auto snippet = m_snippets[found->index];
    bool terminated = found->terminatedBySpace;
    m_buffer.reset();
    m_guard.post(m_runtime.mainQueue(), [this, snippet = std::move(snippet), terminated] {
        if (m_enabled)
            expand(snippet, terminated);
    });
}

void Snippets::expand(const TextSnippet& snippet, bool terminatedBySpace)
{
    auto front = m_ports.frontApplications.frontApplication();
    auto excluded = m_settings.value(excludedAppsKey);
    if (front && std::find(excluded.begin(), excluded.end(), front->bundleID) != excluded.end())
        return;
    if (m_ports.focus.isSecureInputOn()) {
        m_pauseReason = std::string(secureInputPause);
        return;
    }
    m_pauseReason.reset();

    auto erase = graphemeCount(snippet.trigger) + (terminatedBySpace ? 1 : 0);
    for (std::size_t index = 0; index < erase; ++index)
        m_ports.keystrokes.postKey(KeyCode::deleteBackward, 0);
    auto clipboard = m_ports.pasteboard.read().preferredText();
    auto expansion = SnippetVariables::expand(snippet.text, m_runtime.clock().now(), "", "", clipboard);
    m_typer.insert(expansion);
}

Result<TextSnippet> Snippets::add(TextSnippet snippet)
{
    assertMainThread();
    if (snippet.id.empty() || std::any_of(m_snippets.begin(), m_snippets.end(), [&](const TextSnippet& other) { return other.id == snippet.id; }))
        snippet.id = makeUuid();
    if (auto problem = SnippetMatcher::problem(snippet.trigger, snippet.id, m_snippets))
        return Error { "snippets.trigger", message(*problem), snippet.trigger };
    m_snippets.push_back(snippet);
    if (!snippet.group.empty() && std::find(m_groups.begin(), m_groups.end(), snippet.group) == m_groups.end()) {
        auto groups = m_groups;
        groups.push_back(snippet.group);
        setGroups(std::move(groups));
    }
    save();
    return snippet;
}

Result<void> Snippets::update(const TextSnippet& snippet)
{
    assertMainThread();
    auto found = std::find_if(m_snippets.begin(), m_snippets.end(), [&](const TextSnippet& other) { return other.id == snippet.id; });
    if (found == m_snippets.end())
        return Error { "snippets.unknown", "That snippet no longer exists.", snippet.id };
    if (auto problem = SnippetMatcher::problem(snippet.trigger, snippet.id, m_snippets))
        return Error { "snippets.trigger", message(*problem), snippet.trigger };
    *found = snippet;
    if (!snippet.group.empty() && std::find(m_groups.begin(), m_groups.end(), snippet.group) == m_groups.end()) {
        auto groups = m_groups;
        groups.push_back(snippet.group);
        setGroups(std::move(groups));
    }
    save();
    return {};
}

void Snippets::remove(std::string_view id)
{
    assertMainThread();
    if (std::erase_if(m_snippets, [&](const TextSnippet& snippet) { return snippet.id == id; }) > 0)
        save();
}

std::optional<TextSnippet> Snippets::duplicate(std::string_view id)
{
    assertMainThread();
    auto found = std::find_if(m_snippets.begin(), m_snippets.end(), [&](const TextSnippet& snippet) { return snippet.id == id; });
    if (found == m_snippets.end())
        return std::nullopt;
    auto copy = *found;
    copy.id = makeUuid();
    copy.trigger = uniqueTrigger(found->trigger);
    m_snippets.insert(found + 1, copy);
    save();
    return copy;
}

std::string Snippets::uniqueTrigger(std::string_view trigger) const
{
    auto taken = [&](std::string_view candidate) {
        return std::any_of(m_snippets.begin(), m_snippets.end(), [&](const TextSnippet& snippet) { return snippet.trigger == candidate; });
    };
    if (!taken(trigger))
        return std::string(trigger);
    auto digits = trigger.find_last_not_of("0123456789") + 1;
    std::uint64_t number = 1;
    if (digits < trigger.size()) {
        auto [end, error] = std::from_chars(trigger.data() + digits, trigger.data() + trigger.size(), number);
        if (error != std::errc() || number > 1'000'000)
            number = 1;
        trigger = trigger.substr(0, digits);
    }
    auto base = decodeUtf8(trigger);
    for (;;) {
        ++number;
        auto suffix = std::to_string(number);
        auto stem = base;
        auto candidate = encodeUtf8(stem) + suffix;
        while (!stem.empty() && graphemeCount(candidate) > SnippetMatcher::maximumTriggerLength) {
            stem.pop_back();
            candidate = encodeUtf8(stem) + suffix;
        }
        if (!taken(candidate))
            return candidate;
    }
}

bool Snippets::addGroup(std::string_view name)
{
    assertMainThread();
    auto group = trimmedName(name);
    if (group.empty() || std::find(m_groups.begin(), m_groups.end(), group) != m_groups.end())
        return false;
    auto groups = m_groups;
    groups.push_back(std::move(group));
    setGroups(std::move(groups));
    save();
    return true;
}

bool Snippets::renameGroup(std::string_view from, std::string_view to)
{
    assertMainThread();
    auto name = trimmedName(to);
    auto found = std::find(m_groups.begin(), m_groups.end(), from);
    if (found == m_groups.end() || name.empty() || std::find(m_groups.begin(), m_groups.end(), name) != m_groups.end())
        return false;
    auto groups = m_groups;
    groups[static_cast<std::size_t>(found - m_groups.begin())] = name;
    for (auto& snippet : m_snippets) {
        if (snippet.group == from)
            snippet.group = name;
    }
    setGroups(std::move(groups));
    save();
    return true;
}

void Snippets::deleteGroup(std::string_view name)
{
    assertMainThread();
    auto groups = m_groups;
    if (std::erase(groups, std::string(name)) == 0)
        return;
    for (auto& snippet : m_snippets) {
        if (snippet.group == name)
            snippet.group.clear();
    }
    setGroups(std::move(groups));
    save();
}

void Snippets::moveGroup(std::string_view name, int offset)
{
    assertMainThread();
    auto found = std::find(m_groups.begin(), m_groups.end(), name);
    if (found == m_groups.end() || offset == 0)
        return;
    auto groups = m_groups;
    auto from = static_cast<long>(found - m_groups.begin());
    auto to = std::clamp(from + offset, 0L, static_cast<long>(groups.size()) - 1);
    auto moved = std::move(groups[static_cast<std::size_t>(from)]);
    groups.erase(groups.begin() + from);
    groups.insert(groups.begin() + to, std::move(moved));
    setGroups(std::move(groups));
    save();
}

MergeResult Snippets::merge(const SnippetLibraryFile& incoming, bool replaceConflicts)
{
    assertMainThread();
    auto groups = m_groups;
    for (const auto& group : incoming.groups) {
        if (!group.empty() && std::find(groups.begin(), groups.end(), group) == groups.end())
            groups.push_back(group);
    }
    auto result = SnippetLibrary::merge(m_snippets, groups, incoming.snippets, replaceConflicts);
    m_snippets = result.snippets;
    setGroups(result.groups);
    save();
    return result;
}

std::string Snippets::exportLibrary() const
{
    assertMainThread();
    return SnippetLibrary::encode({ m_snippets, m_groups });
}

} // namespace quillmar
