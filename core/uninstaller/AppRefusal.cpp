#include "core/uninstaller/AppRefusal.h"

#include <system_error>

#include "core/apps/BundleInfo.h"
#include "core/uninstaller/AliasFile.h"
#include "core/uninstaller/ProtectedIdentifiers.h"
#include "core/uninstaller/TrashGuard.h"

namespace quillmar::AppRefusal {

std::optional<std::string_view> reason(const std::filesystem::path& path)
{
    std::error_code error;
    auto absolute = std::filesystem::absolute(path, error);
    if (error)
        return notAnApp;
    auto standard = TrashGuard::standardized(absolute);

    if (std::filesystem::is_symlink(std::filesystem::symlink_status(standard, error)) || AliasFile::isAliasFile(standard))
        return alias;
    if (standard.extension() != ".app")
        return notAnApp;
    const auto& text = standard.native();
    if (text.starts_with("/System/") || text.starts_with("/Library/Apple/"))
        return system;
    if (text.find(".app/") != std::string::npos)
        return nested;

    auto info = readBundleInfo(standard);
    auto identifier = info ? info->string("CFBundleIdentifier") : std::nullopt;
    if (!identifier || identifier->empty())
        return noIdentifier;
    if (ProtectedIdentifiers::isOwn(*identifier))
        return itself;
    if (ProtectedIdentifiers::isProtected(*identifier))
        return protectedApp;
    return std::nullopt;
}

} // namespace quillmar::AppRefusal
