#pragma once

#include <iosfwd>
#include <string>

#include "dalvo/export.h"

namespace dalvo::inspect {

/// The bytes of a text, or why they cannot be had.
struct Contents {
    std::string bytes; ///< all of them where there is no error, else some
    std::string error; ///< "No such file or directory", "is a folder", "is cut short: ...", ...; "" for none
};

/// Reads the file `path` to its end, in binary. Throws std::bad_alloc when memory runs out, and nothing else: whatever
/// keeps the file from being read whole is the `error`.
DALVO_API Contents read_file(const std::string &path);

/// Reads `in` to its end. A stream that fails is an `error`, whatever its own exception mask, which is left as it was.
/// Throws std::bad_alloc when memory runs out, in the stream's buffer too, and what the buffer throws that is no
/// std::exception.
DALVO_API Contents read_stream(std::istream &in);

} // namespace dalvo::inspect
