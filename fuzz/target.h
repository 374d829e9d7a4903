#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

#include "dalvo/options/optionparser.h"

/// A fuzz target: a program has one. libFuzzer calls it with inputs that it makes up, replay_main.cpp with files.
/// A broken promise ends the process. So does whatever the target lets out: no target catches more than it has to.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace dalvo::fuzz {

/// `bytes` with all but printable ASCII as \xHH.
inline std::string shown(const std::string &bytes)
{
    std::string text;
    for (const char c : bytes) {
        char hex[8];
        std::snprintf(hex, sizeof hex, "\\x%02x", static_cast<unsigned>(static_cast<unsigned char>(c)));
        text += c >= ' ' && c <= '~' ? std::string(1, c) : std::string(hex);
    }
    return text;
}

/// Ends the process unless `holds`.
inline void require(bool holds, const char *promise, const std::string &detail = "")
{
    if (!holds) {
        std::fprintf(stderr, "broken promise: %s\n%s\n", promise, shown(detail).c_str());
        std::abort();
    }
}

inline void require_same(const std::string &is, const std::string &expected, const char *promise)
{
    if (is != expected) {
        require(false, promise, "is \"" + is + "\" and not \"" + expected + "\"");
    }
}

inline std::string bytes_of(const std::uint8_t *data, std::size_t size)
{
    return size == 0 ? std::string() : std::string(reinterpret_cast<const char *>(data), size);
}

/// What an error said.
struct Thrown {
    std::string message;
    std::string what;
    std::string option;
    std::string value;
    std::string command_line;
};

/// The OptionParser::error that leaves `action`, if one does. All else passes through, and ends the process.
template <class Action> std::optional<Thrown> thrown_from(Action action)
{
    try {
        action();
    } catch (const OptionParser::error &e) {
        return Thrown{e.message_stream.str(), e.what(), e.option, e.value, e.command_line};
    }
    return std::nullopt;
}

/// The message is whole, and the fields hold what it says.
inline void require_error(const Thrown &thrown, const std::string &head, const std::string &option,
                          const std::string &value)
{
    const std::string message = head + ": " + option + ", value: " + value;
    require_same(thrown.message, message, "an error says what is wrong, where, and with which value");
    require_same(thrown.what, message.c_str(), "what() is the message up to its first NUL");
    require_same(thrown.option, option, "an error carries its option");
    require_same(thrown.value, value, "an error carries its value");
    require_same(thrown.command_line, "", "no error of a setter has a command line");
}

} // namespace dalvo::fuzz
