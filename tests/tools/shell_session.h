#pragma once

#include <string>
#include <vector>

namespace dalvo::tests {

/// What `command`, run by /bin/sh with dalvo-config in its PATH, writes to standard output. `input` is its standard
/// input.
std::string output_of(const std::string &command, const std::string &input = "");

/// A folder with the files "plain.cfg" and "two words.cfg", there until this process ends.
std::string folder_with_files();

/// A shell at a terminal of its own, in `folder_with_files()`, with dalvo-config in its PATH.
class ShellSession {
public:
    explicit ShellSession(const std::vector<std::string> &arguments);
    ~ShellSession();
    ShellSession(const ShellSession &) = delete;
    ShellSession &operator=(const ShellSession &) = delete;

    /// As if typed.
    void type(const std::string &text);

    /// Waits for `text`, at most 20 seconds; what stands before it on the terminal goes to `before`.
    bool wait_for(const std::string &text, std::string *before = nullptr);

private:
    bool read_more();

    int terminal = -1;
    int process = -1;
    std::string seen; // and not yet waited for
};

} // namespace dalvo::tests
