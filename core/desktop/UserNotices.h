#pragma once

#include <string_view>

namespace quillmar {

// Short messages to the user (a toast in the application). Main thread only.
class UserNotices {
public:
    virtual ~UserNotices() = default;

    // A full sentence such as "Copied as plain text"; `detail` is empty or a second sentence.
    virtual void show(std::string_view message, std::string_view detail) = 0;

    // Asks the user to grant Accessibility, saying why with `reason`.
    virtual void askForAccessibility(std::string_view reason) = 0;
};

} // namespace quillmar
