// Hands files to a fuzz target: each file that is named, and each file of a folder that is named, in the order of their
// names. What stands behind --if-there may be missing. Needs no fuzzer, so that the targets are built and their seeds
// and finds tried in every build.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "fuzz/target.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> files_of(const fs::path &path)
{
    if (!fs::is_directory(path)) {
        return {path};
    }
    std::vector<fs::path> files;
    for (const fs::directory_entry &entry : fs::directory_iterator(path)) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

void replay(const fs::path &path)
{
    std::ifstream file(path, std::ios_base::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (!file) {
        throw std::runtime_error("cannot read " + path.string());
    }
    std::fprintf(stderr, "%s\n", path.c_str()); // before it runs: the last one named is the one that ends the process
    const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(input.data(), input.size());
}

std::size_t replay_all(const std::vector<std::string> &arguments)
{
    LLVMFuzzerTestOneInput(nullptr, 0);
    std::size_t count = 0;
    bool may_be_missing = false;
    for (const std::string &argument : arguments) {
        if (argument == "--if-there") {
            may_be_missing = true;
            continue;
        }
        if (may_be_missing && !fs::exists(argument)) {
            continue;
        }
        for (const fs::path &file : files_of(argument)) {
            replay(file);
            ++count;
        }
    }
    return count;
}

} // namespace

int main(int argc, char **argv)
{
    try {
        const std::size_t count = replay_all(std::vector<std::string>(argv + 1, argv + argc));
        std::printf("%zu inputs replayed\n", count);
        return count != 0 ? 0 : 1;
    } catch (const std::exception &e) { // of the file system, or let out by the target
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
}
