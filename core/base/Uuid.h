#pragma once

#include <string>

namespace quillmar {

// A fresh random (version 4) UUID in the usual upper-case text form,
// "E621E1F8-C36C-495A-93FC-0C247A3E6E5F". Safe from any thread.
std::string makeUuid();

} // namespace quillmar
