#include "core/uninstaller/RemovalOutcome.h"

#include <algorithm>

#include <fmt/format.h>

namespace quillmar {

std::string RemovalOutcome::resultLine() const
{
    return fmt::format("{}{}", moved.size(), movedSuffix);
}

std::optional<std::string> RemovalOutcome::failureLine() const
{
    if (failed.empty())
        return std::nullopt;
    if (failed.size() == 1)
        return fmt::format("{}{}", oneFailedPrefix, failed.front().item.name);
    return std::string(someFailedSentence);
}

std::optional<std::string> RemovalOutcome::hint() const
{
    auto refused = [](bool app) {
        return [app](const Failure& failure) {
            return failure.reason == RecycleFailure::Reason::permission && failure.item.isApp == app;
        };
    };
    if (std::any_of(failed.begin(), failed.end(), refused(true)))
        return std::string(appPermissionHint);
    if (std::any_of(failed.begin(), failed.end(), refused(false)))
        return std::string(dataPermissionHint);
    return std::nullopt;
}

} // namespace quillmar
