#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace quillmar {

// What executing a result does; the bar dispatches on the case.
struct CommandPayload {
    // Opens, or activates when running, the application bundle at `path`.
    struct App {
        std::string path;
        bool operator==(const App&) const = default;
    };
    // Opens one pane of this program's settings, by the pane's identifier.
    struct SettingsPane {
        std::string pane;
        bool operator==(const SettingsPane&) const = default;
    };
    // Raises a window: the owning process and the window index's own id for the window.
    struct Window {
        std::int32_t processId = 0;
        std::uint64_t windowId = 0;
        bool operator==(const Window&) const = default;
    };
    // Opens a file or folder with its default application.
    struct File {
        std::string path;
        bool operator==(const File&) const = default;
    };
    // Inserts the snippet with this id.
    struct Snippet {
        std::string snippetId;
        bool operator==(const Snippet&) const = default;
    };
    // Presses a menu item of the application with `processId`; `path` holds the titles from the menu
    // bar down to the item.
    struct Menu {
        std::int32_t processId = 0;
        std::vector<std::string> path;
        bool operator==(const Menu&) const = default;
    };
    // Runs one of the application's own tools, by the tool's id.
    struct Tool {
        std::string toolId;
        bool operator==(const Tool&) const = default;
    };
    // Acts on an inline answer: `value` is the text copied to the clipboard (for a calculation, the
    // number as it can be pasted back).
    struct Answer {
        std::string value;
        bool operator==(const Answer&) const = default;
    };
    // Runs the user script at `path`.
    struct Script {
        std::string path;
        bool operator==(const Script&) const = default;
    };
    // Opens a web search for `query`.
    struct Web {
        std::string query;
        bool operator==(const Web&) const = default;
    };
    // Opens an address.
    struct Url {
        std::string address;
        bool operator==(const Url&) const = default;
    };
    // Types `text` into the front application.
    struct TypeText {
        std::string text;
        bool operator==(const TypeText&) const = default;
    };
    // Replaces the query with `query` and keeps the bar open.
    struct SetQuery {
        std::string query;
        bool operator==(const SetQuery&) const = default;
    };
    // Asks for the accessibility permission.
    struct RequestAccessibility {
        bool operator==(const RequestAccessibility&) const = default;
    };

    enum class Kind : unsigned char {
        app,
        settingsPane,
        window,
        file,
        snippet,
        menu,
        tool,
        answer,
        script,
        web,
        url,
        typeText,
        setQuery,
        requestAccessibility,
    };

    // Alternatives in the order of `Kind`.
    std::variant<App, SettingsPane, Window, File, Snippet, Menu, Tool, Answer, Script, Web, Url, TypeText,
        SetQuery, RequestAccessibility>
        value;

    Kind kind() const { return static_cast<Kind>(value.index()); }

    bool operator==(const CommandPayload&) const = default;
};

} // namespace quillmar
