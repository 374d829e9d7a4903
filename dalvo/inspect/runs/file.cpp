#include "dalvo/inspect/runs/file.h"

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <istream>
#include <new>
#include <system_error>

#include "dalvo/utils/streammask.h"

namespace dalvo::inspect {

namespace {

namespace fs = std::filesystem;

std::string message_of(int error)
{
    return error != 0 ? std::generic_category().message(error) : "cannot be read";
}

/// Appends what `in` has; false where it fails on the way.
bool append_all(std::istream &in, std::string &bytes)
{
    char block[1 << 14];
    while (in.read(block, sizeof block) || in.gcount() > 0) {
        bytes.append(block, static_cast<std::size_t>(in.gcount()));
    }
    return in.eof() && !in.bad();
}

/// The size that the file system has for a file; 0 where it has none, as for a pipe.
std::uintmax_t size_of(const std::string &path)
{
    std::error_code failure;
    const std::uintmax_t size = fs::file_size(path, failure);
    return failure ? 0 : size;
}

} // namespace

Contents read_file(const std::string &path)
{
    std::error_code failure;
    if (path.find('\0') != std::string::npos) { // the system would take what stands before it
        return {"", "has a NUL in its name"};
    }
    if (fs::is_directory(path, failure)) {
        return {"", "is a folder"};
    }
    errno = 0;
    std::ifstream in(path, std::ios_base::binary);
    const std::uintmax_t size = size_of(path);
    Contents contents;
    if (!append_all(in, contents.bytes)) {
        contents.error = message_of(errno);
    } else if (contents.bytes.size() < size) {
        contents.error = "is cut short: " + std::to_string(contents.bytes.size()) + " of " + std::to_string(size) +
                         " bytes could be read";
    }
    return contents;
}

Contents read_stream(std::istream &in)
{
    const StreamMask mask(in);
    Contents contents;
    try {
        if (!append_all(in, contents.bytes)) {
            contents.error = "cannot be read to its end";
        }
    } catch (const std::bad_alloc &) {
        throw;
    } catch (const std::exception &) { // of the stream's buffer
        contents.error = "cannot be read to its end";
    }
    return contents;
}

} // namespace dalvo::inspect
