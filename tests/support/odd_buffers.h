#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <ios>
#include <streambuf>
#include <string>
#include <utility>

namespace dalvo::testing {

/// The buffer of a stream that gives out a text in pieces, and does at its end what `at_end` says.
class PiecewiseBuffer : public std::streambuf {
public:
    PiecewiseBuffer(std::string whole, std::size_t piece_size, std::function<void()> action)
        : text(std::move(whole)), size(piece_size), at_end(std::move(action))
    {
    }

protected:
    int_type underflow() override
    {
        if (used == text.size()) {
            at_end();
            return traits_type::eof();
        }
        const std::size_t count = std::min(size, text.size() - used);
        setg(&text[used], &text[used], &text[used] + count);
        used += count;
        return traits_type::to_int_type(*gptr());
    }

private:
    std::string text;
    std::size_t size;
    std::function<void()> at_end;
    std::size_t used = 0;
};

/// The `code`-th of the eight combinations of the three bits of a stream's state.
inline std::ios_base::iostate state_of(int code)
{
    std::ios_base::iostate state = std::ios_base::goodbit;
    state |= (code & 1) != 0 ? std::ios_base::badbit : std::ios_base::goodbit;
    state |= (code & 2) != 0 ? std::ios_base::failbit : std::ios_base::goodbit;
    state |= (code & 4) != 0 ? std::ios_base::eofbit : std::ios_base::goodbit;
    return state;
}

} // namespace dalvo::testing
