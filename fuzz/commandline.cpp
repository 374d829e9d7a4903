// Any command line of dalvo-config, run in this process: it ends with a documented status, nothing escapes, and what is
// printed holds no control bytes.
//
// An input is an argument a line, up to an empty line; "\n" stands for a newline inside of one. What comes behind is
// the contents of the file t.cfg and of standard input. The tool runs in a folder that holds this file and no other.

#include <fcntl.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "fuzz/target.h"

int dalvo_config_main(int argc, char **argv); // tools/main.cpp, under another name

namespace {

using dalvo::fuzz::require;

struct Input {
    std::vector<std::string> arguments;
    std::string text;
};

/// An argument holds no NUL, and its path leads nowhere.
std::string argument_of(const std::string &line)
{
    std::string argument;
    for (std::size_t i = 0; i < line.size() && line[i] != '\0'; ++i) {
        const bool is_newline = line.compare(i, 2, "\\n") == 0;
        argument += is_newline ? '\n' : line[i] == '/' ? '|' : line[i];
        i += is_newline ? 1 : 0;
    }
    return argument;
}

Input input_of(const std::string &bytes)
{
    Input input;
    std::istringstream in(bytes);
    for (std::string line; std::getline(in, line) && !line.empty();) {
        input.arguments.push_back(argument_of(line));
    }
    std::ostringstream rest;
    if (in.good() && in.peek() != std::istringstream::traits_type::eof()) {
        rest << in.rdbuf();
    }
    input.text = rest.str();
    return input;
}

/// An empty folder of our own, which goes with the process.
class Scratch {
public:
    Scratch()
    {
        const char *const place = std::getenv("TMPDIR");
        path = std::string(place != nullptr ? place : "/tmp") + "/dalvo-fuzz-XXXXXX";
        require(mkdtemp(path.data()) != nullptr, "there is room for a folder", path);
    }
    ~Scratch()
    {
        std::remove((path + "/t.cfg").c_str());
        std::remove(path.c_str());
    }
    Scratch(const Scratch &) = delete;
    Scratch &operator=(const Scratch &) = delete;

    void write(const std::string &text) const
    {
        std::ofstream file(path + "/t.cfg", std::ios_base::binary);
        file << text;
        require(static_cast<bool>(file.flush()), "the text can be written");
    }

    std::string path;
};

/// While it lives, the process works in `folder`.
class WorkingFolder {
public:
    explicit WorkingFolder(const std::string &folder) : before(open(".", O_RDONLY | O_DIRECTORY))
    {
        require(before >= 0 && chdir(folder.c_str()) == 0, "the folder can be entered", folder);
    }
    ~WorkingFolder()
    {
        require(fchdir(before) == 0, "the folder before can be entered again");
        close(before);
    }
    WorkingFolder(const WorkingFolder &) = delete;
    WorkingFolder &operator=(const WorkingFolder &) = delete;

private:
    int before;
};

/// While it lives, `stream` reads or writes `buffer`.
class Redirected {
public:
    Redirected(std::ios &redirected, std::streambuf *buffer) : stream(redirected), before(stream.rdbuf(buffer)) {}
    ~Redirected() { stream.rdbuf(before); }
    Redirected(const Redirected &) = delete;
    Redirected &operator=(const Redirected &) = delete;

private:
    std::ios &stream;
    std::streambuf *before;
};

struct Outcome {
    int status;
    std::string output;
    std::string diagnostics;
};

int status_of(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), "dalvo-config");
    std::vector<char *> argv;
    for (std::string &argument : arguments) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    return dalvo_config_main(static_cast<int>(arguments.size()), argv.data());
}

Outcome run(const Input &input)
{
    static const Scratch scratch;
    scratch.write(input.text);
    std::istringstream in(input.text);
    std::ostringstream out;
    std::ostringstream err;
    const WorkingFolder folder(scratch.path);
    const Redirected input_stream(std::cin, in.rdbuf());
    const Redirected output(std::cout, out.rdbuf());
    const Redirected diagnostics(std::cerr, err.rdbuf());
    const int status = status_of(input.arguments);
    return {status, out.str(), err.str()};
}

bool is_printed_as_it_is(const std::string &line)
{
    for (const char *const start : {"debug.api_call_trace_filename = ", "printer.defines_prefix = "}) {
        if (line.rfind(start, 0) == 0) { // as a configuration text: it must read back
            return true;
        }
    }
    return false;
}

void require_printable(const std::string &line)
{
    for (const char c : line) {
        const unsigned byte = static_cast<unsigned char>(c);
        require(byte >= 0x20 && byte != 0x7F, "control bytes are escaped", line);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const int environment = setenv("NO_COLOR", "1", 1) + setenv("COLUMNS", "80", 1);
    require(environment == 0, "the environment can be set");
    const std::string bytes = dalvo::fuzz::bytes_of(data, size);
    const Outcome outcome = run(input_of(bytes));
    require(outcome.status >= 0 && outcome.status <= 2, "the status is 0, 1 or 2", std::to_string(outcome.status));
    std::istringstream diagnostics(outcome.diagnostics);
    const bool may_colour = bytes.find("always") != std::string::npos; // --color
    for (std::string line; std::getline(diagnostics, line) && !may_colour;) {
        require_printable(line);
    }
    std::istringstream output(outcome.output);
    for (std::string line; std::getline(output, line);) {
        if (!is_printed_as_it_is(line)) {
            require_printable(line);
        }
    }
    require(outcome.status != 2 || !outcome.diagnostics.empty(), "who is refused is told why");
    return 0;
}
