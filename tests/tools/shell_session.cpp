#include "tests/tools/shell_session.h"

#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <system_error>

#include <gtest/gtest.h>

namespace dalvo::tests {

namespace {

namespace fs = std::filesystem;

constexpr auto patience = std::chrono::seconds(20);

struct Folder {
    const fs::path path = fs::path(::testing::TempDir()) / ("dalvo_completion_" + std::to_string(getpid()));

    Folder()
    {
        fs::create_directories(path);
        for (const char *name : {"plain.cfg", "two words.cfg"}) {
            std::ofstream(path / name) << "verbosity = 1\n";
        }
    }
    ~Folder()
    {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
};

std::string path_with_tool()
{
    const char *const path = std::getenv("PATH");
    return std::string(DALVO_CONFIG_DIR) + ":" + (path != nullptr ? path : "/usr/bin:/bin");
}

/// Runs `arguments` in this process, with what a shell at a terminal needs and no file of a user's.
[[noreturn]] void become(const std::vector<std::string> &arguments, const std::string &folder, const std::string &path)
{
    std::vector<char *> pointers;
    for (const std::string &argument : arguments) {
        pointers.push_back(const_cast<char *>(argument.c_str()));
    }
    pointers.push_back(nullptr);
    setenv("PATH", path.c_str(), 1);
    setenv("HOME", folder.c_str(), 1);
    setenv("TERM", "xterm", 1);
    unsetenv("HISTFILE");
    if (chdir(folder.c_str()) == 0) {
        execvp(pointers.front(), pointers.data());
    }
    _exit(127);
}

} // namespace

std::string output_of(const std::string &command, const std::string &input)
{
    const fs::path folder = folder_with_files();
    const fs::path standard_input = folder.parent_path() / (folder.filename().string() + ".in");
    std::ofstream(standard_input, std::ios_base::binary) << input;
    const std::string line = "cd '" + folder.string() + "' && PATH='" + path_with_tool() + "' && { " + command +
                             "\n} <'" + standard_input.string() + "'";
    const std::unique_ptr<FILE, int (*)(FILE *)> pipe(popen(line.c_str(), "r"), pclose);
    std::string output;
    for (int c = std::fgetc(pipe.get()); c != EOF; c = std::fgetc(pipe.get())) {
        output += static_cast<char>(c);
    }
    fs::remove(standard_input);
    return output;
}

std::string folder_with_files()
{
    static const Folder folder;
    return folder.path.string();
}

ShellSession::ShellSession(const std::vector<std::string> &arguments)
{
    const std::string folder = folder_with_files();
    const std::string path = path_with_tool();
    winsize size{};
    size.ws_row = 50;
    size.ws_col = 200;
    process = forkpty(&terminal, nullptr, nullptr, &size);
    if (process < 0) {
        throw std::runtime_error("no terminal");
    }
    if (process == 0) {
        become(arguments, folder, path);
    }
}

ShellSession::~ShellSession()
{
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
    close(terminal);
}

void ShellSession::type(const std::string &text)
{
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t count = write(terminal, text.data() + done, text.size() - done);
        if (count <= 0) {
            throw std::runtime_error("the shell has gone");
        }
        done += static_cast<std::size_t>(count);
    }
}

bool ShellSession::read_more()
{
    pollfd ready{terminal, POLLIN, 0};
    char bytes[4096];
    if (poll(&ready, 1, 1000) <= 0) {
        return true; // nothing yet
    }
    const ssize_t count = read(terminal, bytes, sizeof bytes);
    if (count > 0) {
        seen.append(bytes, static_cast<std::size_t>(count));
    }
    return count > 0;
}

bool ShellSession::wait_for(const std::string &text, std::string *before)
{
    const auto deadline = std::chrono::steady_clock::now() + patience;
    std::size_t at = seen.find(text);
    while (at == std::string::npos && std::chrono::steady_clock::now() < deadline && read_more()) {
        at = seen.find(text);
    }
    if (before != nullptr) {
        *before = seen.substr(0, at);
    }
    seen.erase(0, at == std::string::npos ? 0 : at + text.size());
    return at != std::string::npos;
}

} // namespace dalvo::tests
