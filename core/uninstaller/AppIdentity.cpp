#include "core/uninstaller/AppIdentity.h"

#include <algorithm>
#include <system_error>

#include "core/apps/BundleInfo.h"
#include "core/uninstaller/NameTokens.h"
#include "core/uninstaller/ProtectedIdentifiers.h"

namespace quillmar {

namespace fs = std::filesystem;

namespace {

bool isNestedBundleExtension(const fs::path& path)
{
    auto extension = path.extension();
    return extension == ".app" || extension == ".xpc" || extension == ".appex";
}

void addOnce(std::vector<std::string>& list, std::string value)
{
    if (std::find(list.begin(), list.end(), value) == list.end())
        list.push_back(std::move(value));
}

std::string fileNameWithoutApp(const fs::path& bundle)
{
    auto name = bundle.filename().string();
    if (name.ends_with(".app"))
        name.resize(name.size() - 4);
    return name;
}

} // namespace

std::vector<std::string_view> AppIdentity::identifiers() const
{
    std::vector<std::string_view> all { bundleID };
    all.insert(all.end(), embeddedBundleIDs.begin(), embeddedBundleIDs.end());
    return all;
}

std::vector<std::string> AppIdentity::nameTokens() const
{
    std::vector<std::string> tokens;
    for (const auto& sequence : nameSequences) {
        for (const auto& token : sequence)
            addOnce(tokens, token);
    }
    return tokens;
}

std::vector<std::string> AppIdentity::nestedBundleIDs(const fs::path& bundle, const std::function<bool()>& isCancelled)
{
    std::vector<std::string> found;
    std::error_code error;
    // Links are not followed (the default), so a framework's "Versions/Current" is not walked twice.
    fs::recursive_directory_iterator entries(bundle, fs::directory_options::skip_permission_denied, error);
    int budget = embeddedSearchBudget;
    for (; !error && entries != fs::recursive_directory_iterator(); entries.increment(error)) {
        if (--budget < 0 || (isCancelled && budget % 256 == 0 && isCancelled()))
            break;
        const auto& entry = *entries;
        std::error_code kindError;
        if (!entry.is_directory(kindError) || entry.is_symlink(kindError))
            continue;
        // depth() is 0 for the bundle's direct entries, so that entry is one level down.
        if (entries.depth() + 1 >= embeddedSearchDepth)
            entries.disable_recursion_pending();
        if (!isNestedBundleExtension(entry.path()))
            continue;
        auto info = readBundleInfo(entry.path());
        if (!info)
            continue;
        auto identifier = info->string("CFBundleIdentifier");
        if (identifier && !identifier->empty())
            addOnce(found, *identifier);
    }
    return found;
}

AppIdentity AppIdentity::make(const fs::path& bundle, std::string bundleID, SigningInfo& signing,
    const std::function<bool()>& isCancelled)
{
    AppIdentity identity;
    identity.bundleID = std::move(bundleID);
    for (auto& nested : nestedBundleIDs(bundle, isCancelled)) {
        if (nested == identity.bundleID)
            continue;
        if (ProtectedIdentifiers::isProtected(nested))
            identity.protectedEmbeddedIDs.push_back(std::move(nested));
        else
            identity.embeddedBundleIDs.push_back(std::move(nested));
    }

    auto details = signing.details(bundle);
    identity.teamIdentifier = std::move(details.teamIdentifier);
    identity.applicationGroups = std::move(details.applicationGroups);

    auto lastDot = identity.bundleID.rfind('.');
    auto lastComponent = lastDot == std::string::npos ? identity.bundleID : identity.bundleID.substr(lastDot + 1);
    for (const auto& source : { fileNameWithoutApp(bundle), lastComponent }) {
        auto words = NameTokens::split(source);
        if (!words.empty() && std::find(identity.nameSequences.begin(), identity.nameSequences.end(), words)
                == identity.nameSequences.end())
            identity.nameSequences.push_back(std::move(words));
    }
    return identity;
}

} // namespace quillmar
