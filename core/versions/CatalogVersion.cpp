#include "core/versions/CatalogVersion.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "core/versions/AppVersion.h"
#include "core/versions/VersionCharacters.h"

namespace quillmar {

namespace {

using Verdict = CatalogVersion::Verdict;

// The catalogue version's base and, after a "-" or "+", its build suffix (kept only when it is all numbers).
struct CatalogParts {
    std::string base;
    std::string suffix;
};

CatalogParts splitCatalog(const std::string& catalog)
{
    auto mark = catalog.find_first_of("-+");
    if (mark == std::string::npos)
        return { catalog, {} };
    auto suffix = catalog.substr(mark + 1);
    return { catalog.substr(0, mark), isAllNumbers(suffix) ? suffix : std::string() };
}

// The catalogue base carries the installed short version's parts one for one and then more of its own
// ('3.4.1.2207' against '3.4.1'); those extra parts, joined with ".". None when the base is not such a
// longer form.
std::optional<std::string> extraBuildParts(const std::string& base, const std::string& shortVersion)
{
    auto baseParts = AppVersion::parts(base);
    auto shortParts = AppVersion::parts(shortVersion);
    if (shortParts.size() >= baseParts.size())
        return std::nullopt;
    for (std::size_t index = 0; index < shortParts.size(); ++index) {
        if (baseParts[index] != shortParts[index])
            return std::nullopt;
    }
    std::string extra;
    for (std::size_t index = shortParts.size(); index < baseParts.size(); ++index) {
        if (!extra.empty())
            extra += '.';
        extra += baseParts[index];
    }
    return extra;
}

} // namespace

Verdict CatalogVersion::verdict(std::string_view catalogVersion, std::string_view shortVersion, std::string_view build)
{
    auto catalog = AppVersion::normalize(catalogVersion);
    // "latest": the package follows the vendor's newest release and names no version.
    if (catalog.empty() || lowercasedText(catalog) == "latest")
        return Verdict::uncomparable;
    auto installedShort = AppVersion::normalize(shortVersion);
    auto installedBuild = AppVersion::normalize(build);
    if (catalog == installedBuild || catalog == installedShort)
        return Verdict::current;
    if (AppVersion::isPlaceholder(installedShort, installedBuild))
        return Verdict::uncomparable;

    auto [base, suffix] = splitCatalog(catalog);
    if (base == installedBuild)
        return Verdict::current;
    // Extra build components in the catalogue: the same build is current, but a different one alone is not
    // trusted to mean a newer release.
    if (auto extra = extraBuildParts(base, installedShort))
        return AppVersion::compare(*extra, installedBuild) == 0 ? Verdict::current : Verdict::uncomparable;

    auto order = AppVersion::compare(base, installedShort);
    if (order < 0)
        return Verdict::current;
    if (order > 0)
        return Verdict::update;
    if (suffix.empty() || installedBuild.empty() || !isAllNumbers(installedBuild))
        return Verdict::current;
    return AppVersion::compare(suffix, installedBuild) > 0 ? Verdict::update : Verdict::current;
}

std::string_view rawValue(CatalogVersion::Verdict verdict)
{
    switch (verdict) {
    case Verdict::update:
        return "update";
    case Verdict::current:
        return "current";
    case Verdict::uncomparable:
        return "uncomparable";
    }
    return "uncomparable";
}

} // namespace quillmar
