#include "dalvo/utils/exception.h"

#include <utility>

namespace dalvo {

namespace {

/// A stream that holds `text` and goes on writing at its end.
std::ostringstream stream_holding(const std::string &text)
{
    return std::ostringstream(text, std::ios_base::out | std::ios_base::ate);
}

} // namespace

Exception::Exception(const std::string &msg) : message_stream(stream_holding(msg))
{
    dump_msg_and_raise_assertion();
}

Exception::Exception(const Exception &other)
    : std::exception(other), message_stream(stream_holding(other.message_stream.str()))
{
}

Exception &Exception::operator=(const Exception &other)
{
    std::ostringstream copy = stream_holding(other.message_stream.str());
    message_stream = std::move(copy);
    return *this;
}

Exception::~Exception() = default;

const char *Exception::what() const noexcept
{
    try {
        message_cache = message_stream.str();
        return message_cache.c_str();
    } catch (...) {
        return "";
    }
}

} // namespace dalvo
