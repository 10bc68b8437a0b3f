#pragma once

#include <functional>
#include <string_view>

#include <fmt/format.h>

namespace quillmar {

// Developer diagnostics: short lower-case lines naming the object and the numbers
// ("settings: moved unreadable settings.json aside"). They go to standard error unless a sink is set
// (tests capture them; the application may log them).
using DiagnosticSink = std::function<void(std::string_view line)>;

// Replaces the process-wide sink; an empty function restores standard error. Set it before threads start.
void setDiagnosticSink(DiagnosticSink sink);

void diagnostic(std::string_view line);

template<typename... Args>
void diagnostic(fmt::format_string<Args...> format, Args&&... args)
{
    diagnostic(std::string_view(fmt::format(format, std::forward<Args>(args)...)));
}

} // namespace quillmar
