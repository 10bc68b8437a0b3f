#pragma once

#include <cassert>
#include <string>
#include <utility>
#include <variant>

#include "core/net/FetchFailure.h"

namespace quillmar {

// The body a fetch read (bytes, possibly empty), or why there is none.
class [[nodiscard]] FetchResult {
public:
    FetchResult(std::string body) : m_state(std::in_place_index<0>, std::move(body)) { }
    FetchResult(FetchFailure failure) : m_state(std::in_place_index<1>, std::move(failure)) { }

    bool ok() const { return m_state.index() == 0; }
    explicit operator bool() const { return ok(); }

    const std::string& body() const& { assert(ok()); return std::get<0>(m_state); }
    std::string&& body() && { assert(ok()); return std::get<0>(std::move(m_state)); }
    const FetchFailure& failure() const { assert(!ok()); return std::get<1>(m_state); }

private:
    std::variant<std::string, FetchFailure> m_state;
};

} // namespace quillmar
