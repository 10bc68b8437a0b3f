#pragma once

#include <string>
#include <string_view>

namespace quillmar {

// The 64-bit XXH3 hash of image data as 16 lower-case hex digits: how a repeated copy of the same image
// is recognised without comparing the bytes.
std::string imageHash(std::string_view data);

} // namespace quillmar
