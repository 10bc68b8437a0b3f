#pragma once

#include <cstddef>
#include <filesystem>
#include <string_view>

namespace quillmar {

// Recognises the alias files a file manager makes, by their content, never by their name (an alias of
// an application is often called "Something.app").
namespace AliasFile {

// The first sixteen bytes of a bookmark-style alias file.
inline constexpr std::string_view bookmarkMagic { "book\0\0\0\0mark\0\0\0\0", 16 };

// At most this much of a file is read; alias files are a few kilobytes.
inline constexpr std::size_t readLimit = 1024 * 1024;

// True when `bytes` start with the bookmark magic, or are a classic resource file (big-endian header of
// data and map offsets and lengths, then the resource map with its type list) that holds an "alis"
// resource: the older alias form. Any bytes are safe to pass; a truncated or inconsistent resource map
// is simply not an alias.
bool isAliasData(std::string_view bytes);

// True when `path` is a regular file (links are not followed) whose data, or whose resource fork where
// the system exposes one as "<path>/..namedfork/rsrc", satisfies `isAliasData`. False for folders and
// for anything that cannot be read.
bool isAliasFile(const std::filesystem::path& path);

} // namespace AliasFile

} // namespace quillmar
