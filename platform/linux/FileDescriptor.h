#pragma once

#include <unistd.h>

#include <utility>

namespace quillmar {

// Owns one file descriptor and closes it; -1 is "none".
class FileDescriptor final {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int fd) : m_fd(fd) { }
    ~FileDescriptor() { reset(); }
    FileDescriptor(FileDescriptor&& other) noexcept : m_fd(std::exchange(other.m_fd, -1)) { }
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        if (this != &other) {
            reset();
            m_fd = std::exchange(other.m_fd, -1);
        }
        return *this;
    }

    int get() const { return m_fd; }
    bool valid() const { return m_fd >= 0; }
    void reset()
    {
        if (m_fd >= 0)
            ::close(m_fd);
        m_fd = -1;
    }

private:
    int m_fd = -1;
};

} // namespace quillmar
