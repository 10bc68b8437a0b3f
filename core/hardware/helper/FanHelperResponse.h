#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillmar {

// The fan helper's answer to every request: whether the asking session controls the fans ("controller"),
// the level the fans are held at, none while automatic ("level"), and a sentence for the user, empty when
// all is well ("message").
struct FanHelperResponse {
    static constexpr std::string_view controllerKey = "controller";
    static constexpr std::string_view levelKey = "level";
    static constexpr std::string_view messageKey = "message";

    bool controller = false;
    std::optional<int> level;
    std::string message;

    bool operator==(const FanHelperResponse&) const = default;
};

} // namespace quillmar
