#pragma once

#include <curl/curl.h>

namespace quillmar {

// Owns one libcurl transfer handle. A handle belongs to one thread at a time.
class CurlEasy final {
public:
    CurlEasy() : m_handle(curl_easy_init()) { }
    ~CurlEasy() { curl_easy_cleanup(m_handle); }
    CurlEasy(const CurlEasy&) = delete;
    CurlEasy& operator=(const CurlEasy&) = delete;

    // Null when libcurl could not allocate the handle.
    CURL* get() const { return m_handle; }

private:
    CURL* m_handle;
};

} // namespace quillmar
