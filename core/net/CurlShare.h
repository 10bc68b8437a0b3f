#pragma once

#include <array>
#include <memory>
#include <mutex>

#include <curl/curl.h>

namespace quillmar {

// What concurrent transfers share: the DNS cache and TLS sessions, each behind its own lock. Connections
// are deliberately not shared: libcurl does not support one connection cache used from several threads
// at once, so every transfer has its own connection and closes it when done.
class CurlShare final {
public:
    // Null when libcurl could not allocate the share.
    static std::unique_ptr<CurlShare> create();
    ~CurlShare();
    CurlShare(const CurlShare&) = delete;
    CurlShare& operator=(const CurlShare&) = delete;

    CURLSH* get() const { return m_handle; }

private:
    CurlShare() = default;

    static void lock(CURL*, curl_lock_data data, curl_lock_access, void* share);
    static void unlock(CURL*, curl_lock_data data, void* share);

    CURLSH* m_handle = nullptr;
    std::array<std::mutex, CURL_LOCK_DATA_LAST> m_locks;
};

} // namespace quillmar
