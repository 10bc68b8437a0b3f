#include "core/apps/ElectronFeed.h"

#include <fmt/format.h>

#include "core/apps/FlatYaml.h"
#include "core/net/SafeFetcher.h"
#include "core/versions/AppVersion.h"

namespace quillmar {

namespace {

std::optional<std::string> field(const std::map<std::string, std::string, std::less<>>& scalars, std::string_view key)
{
    auto found = scalars.find(key);
    if (found == scalars.end() || found->second.empty())
        return std::nullopt;
    return found->second;
}

bool isTrue(std::string_view value)
{
    return value == "true" || value == "True" || value == "TRUE";
}

std::optional<ElectronFeed::Config> githubConfig(const std::map<std::string, std::string, std::less<>>& scalars,
    const ElectronFeed::Origins& origins)
{
    auto owner = field(scalars, "owner");
    auto repo = field(scalars, "repo");
    if (!owner || !repo || !ElectronFeed::isSafeName(*owner) || !ElectronFeed::isSafeName(*repo))
        return std::nullopt;
    // A private repository cannot be read anonymously.
    if (auto privacy = field(scalars, "private"); privacy && isTrue(*privacy))
        return std::nullopt;
    auto repository = fmt::format("{}/{}/{}", origins.github, *owner, *repo);
    auto manifestURL = Url::parse(repository + "/releases/latest/download/latest-mac.yml");
    auto releasesPage = Url::parse(repository + "/releases/latest");
    if (!manifestURL || !releasesPage)
        return std::nullopt;
    return ElectronFeed::Config { *manifestURL, *releasesPage };
}

std::optional<ElectronFeed::Config> genericConfig(const std::map<std::string, std::string, std::less<>>& scalars)
{
    auto text = field(scalars, "url");
    auto channel = field(scalars, "channel").value_or("latest");
    if (!text || !ElectronFeed::isSafeName(channel))
        return std::nullopt;
    auto url = Url::parse(*text);
    if (!url || !SafeFetcher::isAllowed(*url))
        return std::nullopt;
    // The url names a folder whether or not it ends in "/": the manifest goes inside it, before any query.
    const auto& normalised = url->text();
    auto queryStart = normalised.find('?');
    auto folder = normalised.substr(0, queryStart);
    if (folder.empty() || folder.back() != '/')
        folder += '/';
    auto query = queryStart == std::string::npos ? std::string() : normalised.substr(queryStart);
    auto manifestURL = Url::parse(folder + channel + "-mac.yml" + query);
    if (!manifestURL || !SafeFetcher::isAllowed(*manifestURL))
        return std::nullopt;
    return ElectronFeed::Config { *manifestURL, std::nullopt };
}

} // namespace

std::map<std::string, std::string, std::less<>> ElectronFeed::scalars(std::string_view text)
{
    return flatYamlScalars(text);
}

std::optional<ElectronFeed::Config> ElectronFeed::config(std::string_view text, const Origins& origins)
{
    auto values = scalars(text);
    auto provider = field(values, "provider");
    if (provider == "github")
        return githubConfig(values, origins);
    if (provider == "generic")
        return genericConfig(values);
    return std::nullopt;
}

std::optional<ElectronFeed::Config> ElectronFeed::config(std::string_view text)
{
    return config(text, Origins {});
}

std::optional<ElectronFeed::Manifest> ElectronFeed::manifest(std::string_view text)
{
    auto values = scalars(text);
    auto version = field(values, "version");
    if (!version)
        return std::nullopt;
    return Manifest { *version, field(values, "minimumSystemVersion"), field(values, "releaseDate") };
}

bool ElectronFeed::isSafeName(std::string_view name)
{
    if (name.empty() || name.size() > 100 || name.find("..") != std::string_view::npos)
        return false;
    for (char character : name) {
        bool allowed = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z')
            || (character >= '0' && character <= '9') || character == '.' || character == '_' || character == '-';
        if (!allowed)
            return false;
    }
    return true;
}

bool ElectronFeed::isOffered(const Manifest& manifest, std::string_view kernelRelease)
{
    if (!AppVersion::isStableNumeric(manifest.version))
        return false;
    if (manifest.minimumSystemVersion && AppVersion::compare(*manifest.minimumSystemVersion, kernelRelease) > 0)
        return false;
    return true;
}

} // namespace quillmar
