#pragma once

#include <filesystem>
#include <string>

namespace quillmar {

// Why one path was not moved to the Trash.
struct RecycleFailure {
    enum class Reason {
        permission, // the system refused access: a privacy setting or file permissions
        notFound, // it was gone already
        other,
    };

    std::filesystem::path path;
    Reason reason = Reason::other;
    std::string message; // the system's own words, for diagnostics

    bool operator==(const RecycleFailure&) const = default;
};

} // namespace quillmar
