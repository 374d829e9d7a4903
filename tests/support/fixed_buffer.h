#pragma once

#include <streambuf>
#include <string>

namespace dalvo::testing {

/// The buffer of a stream that never asks the heap. What does not fit makes the stream fail.
class FixedBuffer : public std::streambuf {
public:
    FixedBuffer() { setp(bytes, bytes + sizeof bytes); }

    std::string text() const { return std::string(pbase(), pptr()); }

    void clear() { setp(bytes, bytes + sizeof bytes); }

private:
    char bytes[20000];
};

} // namespace dalvo::testing
