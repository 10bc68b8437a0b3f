#include "platform/linux/DrmConnector.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace quillmar {

namespace {

std::string firstLine(const std::filesystem::path& path)
{
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    return line;
}

std::vector<std::uint8_t> bytesOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    std::vector<char> raw((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    return std::vector<std::uint8_t>(raw.begin(), raw.end());
}

bool isBusName(const std::string& name)
{
    return name.size() > 4 && name.starts_with("i2c-")
        && std::all_of(name.begin() + 4, name.end(), [](char character) { return character >= '0' && character <= '9'; });
}

// The DDC bus is the target of the "ddc" link on most drivers; DisplayPort connectors instead hold their
// AUX channel's bus as a sub-folder.
std::optional<std::string> busOf(const std::filesystem::path& folder)
{
    std::error_code error;
    auto link = std::filesystem::read_symlink(folder / "ddc", error);
    if (!error && isBusName(link.filename().string()))
        return link.filename().string();
    std::vector<std::string> buses;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        auto name = entry.path().filename().string();
        if (isBusName(name))
            buses.push_back(name);
    }
    if (buses.empty())
        return std::nullopt;
    std::sort(buses.begin(), buses.end());
    return buses.front();
}

} // namespace

bool DrmConnector::isInternal() const
{
    return connector.starts_with("eDP") || connector.starts_with("LVDS") || connector.starts_with("DSI");
}

std::vector<DrmConnector> DrmConnector::scan(const std::filesystem::path& root)
{
    std::vector<DrmConnector> connectors;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(root, error)) {
        auto name = entry.path().filename().string();
        // "card0" itself, "renderD128" and "version" are not connectors; "card0-DP-1" is.
        auto dash = name.find('-');
        if (!name.starts_with("card") || dash == std::string::npos)
            continue;
        DrmConnector connector;
        connector.name = name;
        connector.connector = name.substr(dash + 1);
        connector.connected = firstLine(entry.path() / "status") == "connected";
        connector.bus = busOf(entry.path());
        if (connector.connected)
            connector.edid = bytesOf(entry.path() / "edid");
        connectors.push_back(std::move(connector));
    }
    std::sort(connectors.begin(), connectors.end(),
        [](const DrmConnector& a, const DrmConnector& b) { return a.name < b.name; });
    return connectors;
}

} // namespace quillmar
