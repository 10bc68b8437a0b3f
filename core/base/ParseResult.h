#pragma once

#include <cassert>
#include <string>
#include <utility>
#include <variant>

namespace quillmar {

// Why a document from outside (a feed, a store reply, a property list) gave nothing.
enum class ParseProblem {
    refused,   // it uses something the reader never accepts (an appcast's entity declarations)
    malformed, // it is not the format the reader expects
    tooLarge,  // it exceeds the reader's limits: size, nesting or count
};

struct ParseFailure {
    ParseProblem problem = ParseProblem::malformed;
    // For developers and logs, short and lower-case: "appcast: element on level 33".
    std::string detail;

    friend bool operator==(const ParseFailure&, const ParseFailure&) = default;
};

// What a reader of outside data gives: the value, or the problem and its diagnostic.
template<typename T>
class [[nodiscard]] ParseResult {
public:
    ParseResult(T value) : m_state(std::in_place_index<0>, std::move(value)) { }
    ParseResult(ParseFailure failure) : m_state(std::in_place_index<1>, std::move(failure)) { }

    bool ok() const { return m_state.index() == 0; }
    explicit operator bool() const { return ok(); }

    T& value() & { assert(ok()); return std::get<0>(m_state); }
    const T& value() const& { assert(ok()); return std::get<0>(m_state); }
    T&& value() && { assert(ok()); return std::get<0>(std::move(m_state)); }
    T* operator->() { return &value(); }
    const T* operator->() const { return &value(); }
    T& operator*() & { return value(); }
    const T& operator*() const& { return value(); }
    T&& operator*() && { return std::move(*this).value(); }

    const ParseFailure& failure() const { assert(!ok()); return std::get<1>(m_state); }
    ParseProblem problem() const { return failure().problem; }

private:
    std::variant<T, ParseFailure> m_state;
};

} // namespace quillmar
