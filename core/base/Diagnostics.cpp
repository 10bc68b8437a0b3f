#include "core/base/Diagnostics.h"

#include <cstdio>

namespace quillmar {

namespace {
DiagnosticSink& currentSink()
{
    static DiagnosticSink sink;
    return sink;
}
}

void setDiagnosticSink(DiagnosticSink sink)
{
    currentSink() = std::move(sink);
}

void diagnostic(std::string_view line)
{
    if (auto& sink = currentSink()) {
        sink(line);
        return;
    }
    std::fprintf(stderr, "quillmar: %.*s\n", static_cast<int>(line.size()), line.data());
}

} // namespace quillmar
