#include "platform/linux/GioRecycler.h"

#include <memory>

#include <gio/gio.h>

namespace quillmar {

namespace {

struct ObjectRelease {
    void operator()(GFile* file) const { g_object_unref(file); }
};
struct ErrorRelease {
    void operator()(GError* error) const { g_error_free(error); }
};
using FileHandle = std::unique_ptr<GFile, ObjectRelease>;
using ErrorHandle = std::unique_ptr<GError, ErrorRelease>;

RecycleFailure::Reason reasonOf(const GError& error)
{
    if (error.domain != G_IO_ERROR)
        return RecycleFailure::Reason::other;
    switch (error.code) {
    case G_IO_ERROR_PERMISSION_DENIED:
        return RecycleFailure::Reason::permission;
    case G_IO_ERROR_NOT_FOUND:
        return RecycleFailure::Reason::notFound;
    default:
        return RecycleFailure::Reason::other;
    }
}

} // namespace

std::vector<RecycleFailure> GioRecycler::recycleBatch(std::span<const std::filesystem::path> paths)
{
    std::vector<RecycleFailure> failures;
    for (const auto& path : paths) {
        FileHandle file(g_file_new_for_path(path.c_str()));
        GError* raw = nullptr;
        if (g_file_trash(file.get(), /*cancellable=*/nullptr, &raw))
            continue;
        ErrorHandle error(raw);
        if (error)
            failures.push_back({ path, reasonOf(*error), error->message ? error->message : "" });
        else
            failures.push_back({ path, RecycleFailure::Reason::other, "the trash refused it" });
    }
    return failures;
}

} // namespace quillmar
