#pragma once

#include <array>
#include <string_view>

namespace quillmar {

// Identifiers whose files the uninstaller never offers: the system's, this suite's own, and shared
// frameworks and updaters whose files serve many applications at once.
namespace ProtectedIdentifiers {

// Checked in this order; an identifier is protected when it begins with any of them (case-sensitive).
inline constexpr std::array<std::string_view, 15> prefixes {
    "com.apple",
    "com.quillmar",
    "developer.apple",
    "is.workflow",
    "org.sparkle-project",
    "com.plausiblelabs",
    "com.crashlytics",
    "com.segment",
    "io.sentry",
    "com.amplitude",
    "com.rollbar",
    "com.google.keystone",
    "com.google.softwareupdate",
    "org.cups",
    "org.swift",
};

// True when `identifier` begins with one of `prefixes`.
bool isProtected(std::string_view identifier);

// True when `identifier`, lower-cased (ASCII), begins with "com.quillmar.": one of this suite's own
// applications, which never remove themselves.
bool isOwn(std::string_view identifier);

} // namespace ProtectedIdentifiers

} // namespace quillmar
