#pragma once

#include <plist/plist.h>

namespace quillmar {

// Owns one libplist tree and frees it at the end of scope.
class PlistHandle final {
public:
    PlistHandle() = default;
    explicit PlistHandle(plist_t node) : m_node(node) { }
    ~PlistHandle()
    {
        if (m_node)
            plist_free(m_node);
    }
    PlistHandle(const PlistHandle&) = delete;
    PlistHandle& operator=(const PlistHandle&) = delete;

    plist_t get() const { return m_node; }
    // For libplist's out-parameters; the handle must be empty.
    plist_t* receive() { return &m_node; }

private:
    plist_t m_node = nullptr;
};

} // namespace quillmar
