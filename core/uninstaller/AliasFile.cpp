#include "core/uninstaller/AliasFile.h"

#include <cstdint>
#include <fstream>
#include <string>
#include <system_error>

namespace quillmar::AliasFile {

namespace {

constexpr std::size_t resourceHeaderSize = 16;
// The map starts with a copy of the header, a handle, a file reference and attributes (28 bytes), then
// the offsets of the type list and the name list.
constexpr std::size_t mapTypeListOffsetAt = 24;
constexpr std::size_t mapMinimumSize = 28;
constexpr std::size_t typeEntrySize = 8;
constexpr std::string_view aliasType = "alis";

std::uint32_t bigEndian(std::string_view bytes, std::size_t at, std::size_t width)
{
    std::uint32_t value = 0;
    for (std::size_t index = 0; index < width; ++index)
        value = (value << 8) | static_cast<unsigned char>(bytes[at + index]);
    return value;
}

bool holdsAliasResource(std::string_view bytes)
{
    if (bytes.size() < resourceHeaderSize)
        return false;
    std::size_t dataOffset = bigEndian(bytes, 0, 4);
    std::size_t mapOffset = bigEndian(bytes, 4, 4);
    std::size_t dataLength = bigEndian(bytes, 8, 4);
    std::size_t mapLength = bigEndian(bytes, 12, 4);
    if (dataOffset < resourceHeaderSize || dataLength > bytes.size() || dataOffset > bytes.size() - dataLength)
        return false;
    if (mapLength < mapMinimumSize || mapLength > bytes.size() || mapOffset > bytes.size() - mapLength)
        return false;
    auto map = bytes.substr(mapOffset, mapLength);
    std::size_t typeList = bigEndian(map, mapTypeListOffsetAt, 2);
    if (typeList > map.size() || map.size() - typeList < 2)
        return false;
    // The type list starts with the number of types minus one; 0xFFFF means none.
    auto countMinusOne = bigEndian(map, typeList, 2);
    if (countMinusOne == 0xFFFF)
        return false;
    std::size_t types = countMinusOne + 1;
    for (std::size_t index = 0; index < types; ++index) {
        std::size_t entry = typeList + 2 + index * typeEntrySize;
        if (entry > map.size() || map.size() - entry < typeEntrySize)
            return false;
        if (map.substr(entry, 4) == aliasType)
            return true;
    }
    return false;
}

bool readStart(const std::filesystem::path& path, std::string& bytes)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return false;
    bytes.resize(readLimit);
    file.read(bytes.data(), static_cast<std::streamsize>(readLimit));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return true;
}

} // namespace

bool isAliasData(std::string_view bytes)
{
    return bytes.starts_with(bookmarkMagic) || holdsAliasResource(bytes);
}

bool isAliasFile(const std::filesystem::path& path)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(std::filesystem::symlink_status(path, error)))
        return false;
    std::string bytes;
    if (readStart(path, bytes) && isAliasData(bytes))
        return true;
    return readStart(path / "..namedfork" / "rsrc", bytes) && holdsAliasResource(bytes);
}

} // namespace quillmar::AliasFile
