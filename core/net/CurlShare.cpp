#include "core/net/CurlShare.h"

#include <cstddef>

namespace quillmar {

std::unique_ptr<CurlShare> CurlShare::create()
{
    std::unique_ptr<CurlShare> share(new CurlShare());
    share->m_handle = curl_share_init();
    if (!share->m_handle)
        return nullptr;
    bool configured = curl_share_setopt(share->m_handle, CURLSHOPT_LOCKFUNC, &CurlShare::lock) == CURLSHE_OK
        && curl_share_setopt(share->m_handle, CURLSHOPT_UNLOCKFUNC, &CurlShare::unlock) == CURLSHE_OK
        && curl_share_setopt(share->m_handle, CURLSHOPT_USERDATA, share.get()) == CURLSHE_OK
        && curl_share_setopt(share->m_handle, CURLSHOPT_SHARE, CURL_LOCK_DATA_DNS) == CURLSHE_OK
        && curl_share_setopt(share->m_handle, CURLSHOPT_SHARE, CURL_LOCK_DATA_SSL_SESSION) == CURLSHE_OK;
    return configured ? std::move(share) : nullptr;
}

CurlShare::~CurlShare()
{
    if (m_handle)
        curl_share_cleanup(m_handle);
}

void CurlShare::lock(CURL*, curl_lock_data data, curl_lock_access, void* share)
{
    static_cast<CurlShare*>(share)->m_locks[static_cast<std::size_t>(data)].lock();
}

void CurlShare::unlock(CURL*, curl_lock_data data, void* share)
{
    static_cast<CurlShare*>(share)->m_locks[static_cast<std::size_t>(data)].unlock();
}

} // namespace quillmar
