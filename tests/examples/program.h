#pragma once

#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace examples::testing {

/// What a program did.
struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
};

inline std::string file_text(const std::string &file)
{
    std::ifstream in(file, std::ios_base::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

/// A file that is there while this lives, in the folder for temporary ones.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string &text)
    {
        const char *const folder = std::getenv("TMPDIR");
        name = std::string(folder != nullptr ? folder : "/tmp") + "/dalvo-example-XXXXXX";
        const int handle = mkstemp(name.data());
        if (handle >= 0) {
            std::fclose(fdopen(handle, "w"));
        }
        std::ofstream(name, std::ios_base::binary) << text;
    }
    ~TemporaryFile() { std::remove(name.c_str()); }

    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;

    std::string name;
};

/// Runs `command`, for the shell, in the repository's root.
inline Outcome run(const std::string &command)
{
    const TemporaryFile out("");
    const TemporaryFile err("");
    const std::string script =
        "cd '" DALVO_SOURCE_DIR "' && { " + command + "\n} >'" + out.name + "' 2>'" + err.name + "' </dev/null";
    const int status = std::system(script.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), file_text(out.name), file_text(err.name)};
}

} // namespace examples::testing
