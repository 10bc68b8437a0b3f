#pragma once

#include <cstddef>
#include <string_view>

#include "core/net/FetchResult.h"
#include "core/net/SafeFetcher.h"

namespace quillmar {

// What the update check fetches through: one GET with a body cap. Called from several threads at once.
class FeedFetcher {
public:
    virtual ~FeedFetcher() = default;
    virtual FetchResult fetch(std::string_view url, std::size_t cap) = 0;
};

// The application's fetcher behind that interface.
class SafeFeedFetcher final : public FeedFetcher {
public:
    explicit SafeFeedFetcher(SafeFetcher& fetcher)
        : m_fetcher(fetcher)
    {
    }
    FetchResult fetch(std::string_view url, std::size_t cap) override { return m_fetcher.fetch(url, cap); }

private:
    SafeFetcher& m_fetcher;
};

} // namespace quillmar
