#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>

namespace dalvo::testing {

/// A new and empty folder, which is gone with all that is in it when this ends.
class TemporaryFolder {
public:
    TemporaryFolder() : folder((std::filesystem::temp_directory_path() / "dalvo-XXXXXX").string())
    {
        if (mkdtemp(folder.data()) == nullptr) {
            throw std::runtime_error("cannot make a temporary folder");
        }
    }

    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    /// The path of `name` in it, whether it is there or not.
    std::string path(const std::string &name) const { return folder + "/" + name; }

    /// Writes a file `name` with `bytes`; its path. Throws std::runtime_error when it cannot.
    std::string write(const std::string &name, const std::string &bytes) const
    {
        std::ofstream out(path(name), std::ios_base::binary);
        out << bytes;
        if (!out.flush()) {
            throw std::runtime_error("cannot write " + name);
        }
        return path(name);
    }

private:
    std::string folder;
};

} // namespace dalvo::testing
