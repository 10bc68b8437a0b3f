#include "core/uninstaller/TrashGuard.h"

#include <algorithm>
#include <system_error>

namespace quillmar {

namespace fs = std::filesystem;

fs::path TrashGuard::standardized(const fs::path& path)
{
    if (!path.is_absolute())
        return {};
    auto normal = path.lexically_normal();
    // lexically_normal keeps one trailing separator ("/a/b/" stays so); the folder is the same.
    auto text = normal.native();
    while (text.size() > 1 && text.back() == '/')
        text.pop_back();
    return fs::path(text);
}

bool TrashGuard::isWithin(const fs::path& path, const fs::path& base)
{
    auto pathPart = path.begin();
    for (auto basePart = base.begin(); basePart != base.end(); ++basePart, ++pathPart) {
        if (pathPart == path.end() || *pathPart != *basePart)
            return false;
    }
    return true;
}

bool TrashGuard::hasSymlink(const fs::path& path, const fs::path& base)
{
    auto standardPath = standardized(path);
    auto standardBase = standardized(base);
    if (standardPath.empty() || standardBase.empty() || standardPath == standardBase
        || !isWithin(standardPath, standardBase))
        return false;
    auto current = standardBase;
    auto part = standardPath.begin();
    std::advance(part, std::distance(standardBase.begin(), standardBase.end()));
    for (; part != standardPath.end(); ++part) {
        current /= *part;
        std::error_code error;
        auto status = fs::symlink_status(current, error);
        if (error && status.type() != fs::file_type::not_found)
            return true;
        if (status.type() == fs::file_type::symlink)
            return true;
    }
    return false;
}

bool TrashGuard::isSafeToTrash(const fs::path& path, const fs::path& home)
{
    auto standardPath = standardized(path);
    if (standardPath.empty())
        return false;
    if (std::any_of(systemPaths.begin(), systemPaths.end(),
            [&standardPath](std::string_view system) { return standardPath == fs::path(system); }))
        return false;

    auto standardHome = standardized(home);
    if (standardHome.empty())
        return true;
    bool isProtectedHomePath = std::any_of(homePaths.begin(), homePaths.end(), [&](std::string_view below) {
        return standardPath == (below.empty() ? standardHome : standardHome / below);
    });
    if (isProtectedHomePath)
        return false;
    if (isWithin(standardPath, standardHome) && hasSymlink(standardPath, standardHome))
        return false;
    return true;
}

bool TrashGuard::isExcluded(const fs::path& path, std::span<const fs::path> excluded)
{
    auto standardPath = standardized(path);
    if (standardPath.empty())
        return false;
    return std::any_of(excluded.begin(), excluded.end(), [&standardPath](const fs::path& candidate) {
        auto standardCandidate = standardized(candidate);
        return !standardCandidate.empty() && isWithin(standardPath, standardCandidate);
    });
}

} // namespace quillmar
