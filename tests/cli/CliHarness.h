#pragma once

#include <filesystem>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "cli/CommandLine.h"
#include "core/settings/FileLocations.h"

namespace quillmar {

// Settings and stores under one test folder, as the XDG variables would place them.
class FolderLocations final : public FileLocations {
public:
    explicit FolderLocations(std::filesystem::path root) : m_root(std::move(root)) { }
    std::filesystem::path settingsFile() const override { return m_root / "config" / "quillmar" / "settings.json"; }
    std::filesystem::path applicationSupport() const override { return m_root / "data" / "Quillmar"; }

private:
    std::filesystem::path m_root;
};

struct CommandRun {
    int code;
    std::string out;
    std::string err;
};

// Runs `quillmar words...` in-process with `input` as standard input and state under `root`.
inline CommandRun runQuillmar(const std::filesystem::path& root, std::vector<std::string> words,
    const std::string& input = {})
{
    words.insert(words.begin(), "quillmar");
    std::vector<const char*> argv;
    for (const auto& word : words)
        argv.push_back(word.c_str());
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream err;
    int code = cli::runCommandLine(static_cast<int>(argv.size()), argv.data(), in, out, err,
        std::make_unique<FolderLocations>(root));
    return { code, out.str(), err.str() };
}

} // namespace quillmar
