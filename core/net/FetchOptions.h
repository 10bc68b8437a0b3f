#pragma once

#include <string>
#include <vector>

namespace quillmar {

// How a fetcher reaches and trusts servers beyond the defaults; both empty in the application. Tests and
// `quillmar fetch` use them to stand a local server in for a real host without loosening the address
// policy: the URL still names the real-looking host, only its address and trust anchor are given here.
struct FetchOptions {
    // PEM certificates trusted in addition to the system's store.
    std::string extraTrustAnchors;
    // "host:port:address" entries used instead of name resolution for those hosts. Proxies are then
    // bypassed so that the entries are honoured.
    std::vector<std::string> fixedAddresses;
};

} // namespace quillmar
