#pragma once

#include <cstdint>
#include <string>
#include <variant>

namespace quillmar {

// What a row shows as its icon. The panel resolves each case; ranking never looks at it.
struct CommandIcon {
    // The icon of a file or folder at `path`.
    struct Path {
        std::string path;
        bool operator==(const Path&) const = default;
    };
    // A named symbol from the application's symbol set ("magnifyingglass").
    struct Symbol {
        std::string name;
        bool operator==(const Symbol&) const = default;
    };
    // The thumbnail of a clipboard history item, by the item's id.
    struct Clip {
        std::string clipId;
        bool operator==(const Clip&) const = default;
    };
    // The icon of the running application with this process id.
    struct Process {
        std::int32_t processId = 0;
        bool operator==(const Process&) const = default;
    };
    // The icon of the application bundle at `path`.
    struct App {
        std::string path;
        bool operator==(const App&) const = default;
    };

    enum class Kind : unsigned char { path, symbol, clip, process, app };

    // Alternatives in the order of `Kind`.
    std::variant<Path, Symbol, Clip, Process, App> value;

    Kind kind() const { return static_cast<Kind>(value.index()); }

    static CommandIcon symbol(std::string name) { return { Symbol { std::move(name) } }; }

    bool operator==(const CommandIcon&) const = default;
};

} // namespace quillmar
