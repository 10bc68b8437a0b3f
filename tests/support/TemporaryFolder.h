#pragma once

#include <filesystem>
#include <random>
#include <string>

namespace quillmar {

// A fresh folder under the system's temporary folder, removed with everything in it at the end of scope.
class TemporaryFolder final {
public:
    TemporaryFolder()
    {
        std::random_device random;
        m_path = std::filesystem::temp_directory_path() / ("quillmar-test-" + std::to_string(random()) + std::to_string(random()));
        std::filesystem::create_directories(m_path);
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

} // namespace quillmar
