#pragma once

#include <string>

#include "core/base/Result.h"

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

// What a reader of outside data gives: the value, or the problem and its diagnostic. A Result whose
// reason is a ParseFailure, named for what callers branch on.
template<typename T>
class [[nodiscard]] ParseResult : public Result<T, ParseFailure> {
public:
    using Result<T, ParseFailure>::Result;

    const ParseFailure& failure() const { return this->error(); }
    ParseProblem problem() const { return failure().problem; }
};

} // namespace quillmar
