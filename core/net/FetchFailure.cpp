#include "core/net/FetchFailure.h"

#include <fmt/format.h>

namespace quillmar {

std::string FetchFailure::description() const
{
    switch (kind) {
    case Kind::http: return fmt::format("http {}", status);
    case Kind::blocked: return "blocked";
    case Kind::notFound: return "notFound";
    case Kind::tooLarge: return "tooLarge";
    case Kind::badResponse: return "badResponse";
    case Kind::transport: return message;
    }
    return message;
}

} // namespace quillmar
