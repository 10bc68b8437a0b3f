#include "core/base/Diagnostics.h"

#include <cstdio>
#include <mutex>

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
    // Background work reports too; one line at a time keeps lines whole and the sink single-threaded.
    static std::mutex lock;
    std::lock_guard guard(lock);
    if (auto& sink = currentSink()) {
        sink(line);
        return;
    }
    std::fprintf(stderr, "quillmar: %.*s\n", static_cast<int>(line.size()), line.data());
}

} // namespace quillmar
