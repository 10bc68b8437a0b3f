#pragma once

#include <memory>
#include <string>

#include <gio/gio.h>

namespace quillmar {

// Owning handles for the GLib objects the D-Bus backends keep.
struct GObjectRelease {
    void operator()(gpointer object) const { g_object_unref(object); }
};
struct GErrorRelease {
    void operator()(GError* error) const { g_error_free(error); }
};
struct GVariantRelease {
    void operator()(GVariant* variant) const { g_variant_unref(variant); }
};

using ConnectionHandle = std::unique_ptr<GDBusConnection, GObjectRelease>;
using FdListHandle = std::unique_ptr<GUnixFDList, GObjectRelease>;
using GErrorHandle = std::unique_ptr<GError, GErrorRelease>;
using VariantHandle = std::unique_ptr<GVariant, GVariantRelease>;

// The error's message, or "unknown error" when GLib gave none.
inline std::string messageOf(const GError* error)
{
    return error && error->message ? error->message : "unknown error";
}

} // namespace quillmar
