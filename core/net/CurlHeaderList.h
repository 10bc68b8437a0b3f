#pragma once

#include <curl/curl.h>

namespace quillmar {

// Owns a libcurl header list; it must outlive every transfer it is set on.
class CurlHeaderList final {
public:
    CurlHeaderList() = default;
    ~CurlHeaderList() { curl_slist_free_all(m_list); }
    CurlHeaderList(const CurlHeaderList&) = delete;
    CurlHeaderList& operator=(const CurlHeaderList&) = delete;

    // False when libcurl could not allocate; the list is then unchanged.
    bool append(const char* line)
    {
        curl_slist* grown = curl_slist_append(m_list, line);
        if (!grown)
            return false;
        m_list = grown;
        return true;
    }

    curl_slist* get() const { return m_list; }

private:
    curl_slist* m_list = nullptr;
};

} // namespace quillmar
