#include "core/uninstaller/LeftoverSearch.h"

#include <algorithm>
#include <system_error>

#include "core/uninstaller/NameTokens.h"
#include "core/uninstaller/ProtectedIdentifiers.h"

namespace quillmar {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view groupContainers = "Group Containers";

bool isNamedAfterProtectedComponent(const std::vector<std::string>& words, const AppIdentity& identity)
{
    return std::any_of(identity.protectedEmbeddedIDs.begin(), identity.protectedEmbeddedIDs.end(),
        [&words](const std::string& identifier) {
            auto lastDot = identifier.rfind('.');
            auto component = lastDot == std::string::npos ? std::string_view(identifier)
                                                           : std::string_view(identifier).substr(lastDot + 1);
            return NameTokens::split(component) == words;
        });
}

// An entry that is itself one of the searched folders ("Application Support/CrashReporter").
bool isSearchedFolder(std::string_view parent, std::string_view name)
{
    return std::any_of(LeftoverLocation::all().begin(), LeftoverLocation::all().end(),
        [parent, name](const LeftoverLocation& location) {
            return location.folder.size() == parent.size() + 1 + name.size() && location.folder.starts_with(parent)
                && location.folder[parent.size()] == '/' && location.folder.ends_with(name);
        });
}

} // namespace

LeftoverSearch::Verdict LeftoverSearch::judge(std::string_view name, const LeftoverLocation& location,
    const AppIdentity& identity)
{
    if (name.empty() || ProtectedIdentifiers::isProtected(name))
        return {};

    auto best = MatchClass::none;
    std::string_view bestIdentifier;
    for (auto identifier : identity.identifiers()) {
        auto match = classify(name, identifier);
        if (match > best) {
            best = match;
            bestIdentifier = identifier;
        }
    }
    if (best != MatchClass::none)
        return ProtectedIdentifiers::isProtected(bestIdentifier) ? Verdict {} : Verdict { best, false };

    if (location.folder == groupContainers) {
        if (std::find(identity.applicationGroups.begin(), identity.applicationGroups.end(), name)
            != identity.applicationGroups.end())
            return { MatchClass::exact, false };
        if (identity.teamIdentifier && !identity.teamIdentifier->empty() && name.size() > identity.teamIdentifier->size()
            && name.starts_with(*identity.teamIdentifier) && name[identity.teamIdentifier->size()] == '.')
            return { MatchClass::related, false };
    }

    if (location.byName) {
        auto words = NameTokens::split(name);
        if (words.empty() || isNamedAfterProtectedComponent(words, identity))
            return {};
        if (std::find(identity.nameSequences.begin(), identity.nameSequences.end(), words) != identity.nameSequences.end())
            return { MatchClass::related, true };
    }
    return {};
}

std::vector<Leftover> LeftoverSearch::find(const AppIdentity& identity, const fs::path& library,
    const Progress& progress, const std::function<bool()>& isCancelled)
{
    std::vector<Leftover> found;
    auto locations = LeftoverLocation::all();
    for (std::size_t index = 0; index < locations.size(); ++index) {
        if (isCancelled && isCancelled())
            break;
        const auto& location = locations[index];
        if (progress)
            progress(index, location);

        std::vector<fs::path> entries;
        std::error_code error;
        for (fs::directory_iterator entry(library / location.folder, error); !error && entry != fs::directory_iterator();
             entry.increment(error))
            entries.push_back(entry->path());
        std::sort(entries.begin(), entries.end());

        for (const auto& path : entries) {
            auto name = path.filename().string();
            if (isSearchedFolder(location.folder, name))
                continue;
            auto verdict = judge(name, location, identity);
            if (verdict.match == MatchClass::none)
                continue;
            Leftover leftover;
            leftover.url = path;
            leftover.kind = std::string(location.label);
            leftover.isExact = verdict.match == MatchClass::exact;
            leftover.isSelected = leftover.isExact;
            leftover.byName = verdict.byName;
            found.push_back(std::move(leftover));
        }
    }
    return found;
}

} // namespace quillmar
