#pragma once

#include <exception>
#include <sstream>
#include <string>

#include "dalvo/export.h"

namespace dalvo {

/// The base of every failure that this library reports.
///
/// The message is text streamed into `message_stream`, by the constructor and, afterwards, by derived constructors or
/// by whoever holds the object; `what()` always shows all that has been written so far.
///
/// Example:
///
///     try { ... }
///     catch (dalvo::Exception &e) { e.message_stream << ", in " << file; throw; }
class DALVO_API Exception : public std::exception {
public:
    /// Writes `msg` (bytes, may be empty; `what()` ends at its first NUL) into the stream, then calls the host's
    /// `dump_msg_and_raise_assertion()` once, before any derived class has added its own part. Throws what the host's
    /// function throws.
    explicit Exception(const std::string &msg);

    /// A copy reads the same as `other`, and text streamed into the copy is appended to the copied text.
    /// `dump_msg_and_raise_assertion()` is not called again.
    Exception(const Exception &other);

    /// Reads as `other` from now on, which may be itself. After a throw (std::bad_alloc) the object reads as before.
    Exception &operator=(const Exception &other);

    ~Exception() override;

    /// All text written so far. The pointer is owned by the object and good until the next call of `what()` on it,
    /// or its end; one thread at a time calls it on one object. Never throws: when memory runs out, the text is "".
    const char *what() const noexcept override;

    /// Everything that makes up the message; opened for output only.
    std::ostringstream message_stream;

private:
    /// Not defined by dalvo::configuration: the host links dalvo::defaults, or defines it. May return; then the
    /// construction goes on.
    void dump_msg_and_raise_assertion();

    mutable std::string message_cache;
};

} // namespace dalvo
