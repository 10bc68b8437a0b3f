#include "core/base/FileSystemCalls.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include <fmt/format.h>

namespace quillmar::FileSystemCalls {

namespace {

Error writeError(const std::filesystem::path& path, std::string_view what)
{
    return Error { "file.unwritable", fmt::format("Could not save {}.", path.string()),
        fmt::format("{}: {}", what, std::strerror(errno)) };
}

class FileDescriptor final {
public:
    explicit FileDescriptor(int fd) : m_fd(fd) { }
    ~FileDescriptor() { close(); }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    int get() const { return m_fd; }
    bool valid() const { return m_fd >= 0; }
    int close()
    {
        int result = 0;
        if (m_fd >= 0)
            result = ::close(m_fd);
        m_fd = -1;
        return result;
    }

private:
    int m_fd;
};

} // namespace

long currentProcessId()
{
    return static_cast<long>(::getpid());
}

bool processIsRunning(long pid)
{
    if (pid <= 0 || pid != static_cast<long>(static_cast<pid_t>(pid)))
        return false;
    // Signal 0 only asks whether the process exists; EPERM means it does but belongs to someone else.
    return ::kill(static_cast<pid_t>(pid), 0) == 0 || errno != ESRCH;
}

Result<void> replaceThroughTemporary(const std::filesystem::path& path, const std::filesystem::path& temporary,
    std::string_view contents)
{
    FileDescriptor file(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    if (!file.valid())
        return writeError(path, "open");

    const char* cursor = contents.data();
    std::size_t left = contents.size();
    while (left > 0) {
        auto written = ::write(file.get(), cursor, left);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0) {
            auto failure = writeError(path, "write");
            ::unlink(temporary.c_str());
            return failure;
        }
        cursor += written;
        left -= static_cast<std::size_t>(written);
    }
    if (::fsync(file.get()) != 0 || file.close() != 0) {
        auto failure = writeError(path, "fsync");
        ::unlink(temporary.c_str());
        return failure;
    }
    if (::rename(temporary.c_str(), path.c_str()) != 0) {
        auto failure = writeError(path, "rename");
        ::unlink(temporary.c_str());
        return failure;
    }
    // The rename itself reaches the disk only with the folder's entry.
    auto folder = path.parent_path();
    FileDescriptor directory(::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.valid())
        ::fsync(directory.get());
    return {};
}

} // namespace quillmar::FileSystemCalls
