#pragma once

#include <cassert>
#include <string>
#include <utility>
#include <variant>

namespace quillmar {

// Why something failed. `code` is a short machine-readable tag ("settings.unreadable"), `message` the
// sentence a user may read, `context` what it concerned (a path, a key), for diagnostics.
struct Error {
    std::string code;
    std::string message;
    std::string context;
};

// A value or an Error: for failures that a user, a file or the system can cause. Readers of outside data
// give another reason instead (ParseResult, with a ParseFailure).
template<typename T, typename E = Error>
class [[nodiscard]] Result {
public:
    Result(T value) : m_state(std::in_place_index<0>, std::move(value)) { }
    Result(E error) : m_state(std::in_place_index<1>, std::move(error)) { }

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

    const E& error() const& { assert(!ok()); return std::get<1>(m_state); }
    E&& error() && { assert(!ok()); return std::get<1>(std::move(m_state)); }

private:
    std::variant<T, E> m_state;
};

template<typename E>
class [[nodiscard]] Result<void, E> {
public:
    Result() = default;
    Result(E error) : m_error(std::move(error)), m_failed(true) { }

    bool ok() const { return !m_failed; }
    explicit operator bool() const { return ok(); }

    const E& error() const& { assert(m_failed); return m_error; }
    E&& error() && { assert(m_failed); return std::move(m_error); }

private:
    E m_error;
    bool m_failed = false;
};

} // namespace quillmar

// Early return on failure: QUILLMAR_TRY(writeFile(path)); passes the Error up unchanged.
#define QUILLMAR_TRY(expression)                                  \
    do {                                                          \
        auto quillmarTryResult_ = (expression);                   \
        if (!quillmarTryResult_)                                  \
            return std::move(quillmarTryResult_).error();         \
    } while (false)

// QUILLMAR_TRY_ASSIGN(auto text, readFile(path)); declares `text` from the value or returns the Error.
#define QUILLMAR_TRY_CONCAT_INNER(a, b) a##b
#define QUILLMAR_TRY_CONCAT(a, b) QUILLMAR_TRY_CONCAT_INNER(a, b)
#define QUILLMAR_TRY_ASSIGN(declaration, expression)                                           \
    auto QUILLMAR_TRY_CONCAT(quillmarTryValue_, __LINE__) = (expression);                      \
    if (!QUILLMAR_TRY_CONCAT(quillmarTryValue_, __LINE__))                                     \
        return std::move(QUILLMAR_TRY_CONCAT(quillmarTryValue_, __LINE__)).error();            \
    declaration = std::move(QUILLMAR_TRY_CONCAT(quillmarTryValue_, __LINE__)).value()
