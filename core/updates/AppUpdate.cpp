#include "core/updates/AppUpdate.h"

#include <iterator>

namespace quillmar {

std::string AppUpdate::installedText() const
{
    if (app.build.empty() || app.build == app.shortVersion)
        return app.shortVersion;
    if (app.shortVersion.empty())
        return app.build;
    return app.shortVersion + " (" + app.build + ")";
}

namespace {

// Names in case order; the static_asserts catch a case added without its name.
constexpr std::string_view sourceNames[] = { "appcast", "electron", "appStore", "none" };
constexpr std::string_view statusNames[] = { "upToDate", "updateAvailable", "notCheckable" };
constexpr std::string_view problemNames[] = { "insecureFeed", "noSource", "refused", "unreachable", "malformed",
    "tooLarge", "notListed" };
constexpr std::string_view problemPhrases[] = { "insecure feed", "no update source", "refused", "unreachable",
    "malformed", "too large", "not in the store" };
static_assert(std::size(sourceNames) == static_cast<std::size_t>(UpdateSource::none) + 1);
static_assert(std::size(statusNames) == static_cast<std::size_t>(UpdateStatus::notCheckable) + 1);
static_assert(std::size(problemNames) == static_cast<std::size_t>(UpdateProblem::notListed) + 1);
static_assert(std::size(problemPhrases) == std::size(problemNames));

template<typename Enum, std::size_t count>
std::string_view nameOf(const std::string_view (&names)[count], Enum value)
{
    return names[static_cast<std::size_t>(value)];
}

} // namespace

std::string_view toString(UpdateSource source)
{
    return nameOf(sourceNames, source);
}

std::string_view toString(UpdateStatus status)
{
    return nameOf(statusNames, status);
}

std::string_view toString(UpdateProblem problem)
{
    return nameOf(problemNames, problem);
}

std::string_view describe(UpdateProblem problem)
{
    return nameOf(problemPhrases, problem);
}

} // namespace quillmar
