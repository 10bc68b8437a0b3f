#pragma once

#include <optional>
#include <string_view>

namespace quillmar {

// One request from the app to the fan helper. Its kind travels as "apply", "heartbeat", "restore" or
// "status"; an apply carries the level under "level".
struct FanHelperRequest {
    enum class Kind { apply, heartbeat, restore, status };

    static constexpr std::string_view levelKey = "level";

    Kind kind = Kind::status;
    int level = 0;

    static FanHelperRequest apply(int level) { return { Kind::apply, level }; }
    static FanHelperRequest heartbeat() { return { Kind::heartbeat, 0 }; }
    static FanHelperRequest restore() { return { Kind::restore, 0 }; }
    static FanHelperRequest status() { return { Kind::status, 0 }; }

    static std::string_view rawValue(Kind kind);
    static std::optional<Kind> kindFromRawValue(std::string_view raw);

    bool operator==(const FanHelperRequest&) const = default;
};

} // namespace quillmar
