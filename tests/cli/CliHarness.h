#pragma once

#include <sys/wait.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "cli/CommandLine.h"
#include "core/settings/FileLocations.h"
#include "tests/support/TemporaryFolder.h"

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

// A command-line test with its own folder for settings and stores.
class CliTest : public testing::Test {
protected:
    CommandRun run(std::vector<std::string> words, const std::string& input = {})
    {
        return runQuillmar(m_folder.path(), std::move(words), input);
    }

    TemporaryFolder m_folder;
};

#ifdef QUILLMAR_BINARY
// Runs the real `quillmar` binary with `input` on standard input and state under `root`; standard error is
// kept in a file under `root`. `environment` holds extra NAME=value settings for the run.
inline CommandRun runQuillmarBinary(const std::filesystem::path& root, const std::vector<std::string>& words,
    const std::string& input = {}, const std::vector<std::string>& environment = {})
{
    auto quoted = [](const std::string& text) {
        std::string result = "'";
        for (char character : text)
            result += character == '\'' ? std::string("'\\''") : std::string(1, character);
        return result + "'";
    };
    auto inputPath = root / "stdin.txt";
    auto errorPath = root / "stderr.txt";
    std::ofstream(inputPath, std::ios::binary) << input;
    std::string command;
    for (const auto& setting : environment)
        command += setting.substr(0, setting.find('=') + 1) + quoted(setting.substr(setting.find('=') + 1)) + " ";
    command += "XDG_CONFIG_HOME=" + quoted((root / "config").string()) + " XDG_DATA_HOME="
        + quoted((root / "data").string()) + " " + QUILLMAR_BINARY;
    for (const auto& word : words)
        command += " " + quoted(word);
    command += " < " + quoted(inputPath.string()) + " 2> " + quoted(errorPath.string());
    CommandRun run { -1, {}, {} };
    std::FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return run;
    char buffer[4096];
    while (auto count = std::fread(buffer, 1, sizeof buffer, pipe))
        run.out.append(buffer, count);
    run.code = WEXITSTATUS(pclose(pipe));
    std::ifstream errors(errorPath);
    run.err.assign(std::istreambuf_iterator<char>(errors), {});
    return run;
}
#endif

} // namespace quillmar
