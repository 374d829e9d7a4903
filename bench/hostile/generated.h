#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <istream>
#include <streambuf>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace dalvo::hostile {

/// A text that is never in memory as a whole: pieces, each a unit written some number of times. A unit says what it
/// appends in its n-th turn, counted from 0.
class GeneratedText {
public:
    using Unit = std::function<void(std::string &out, std::uint64_t n)>;

    GeneratedText &add(std::uint64_t times, Unit unit)
    {
        pieces.push_back({times, std::move(unit)});
        return *this;
    }

    /// `text`, `times` times over.
    GeneratedText &add(std::string_view text, std::uint64_t times = 1)
    {
        if (text.size() != 1) {
            return add(times, [text](std::string &out, std::uint64_t) { out += text; });
        }
        constexpr std::uint64_t block = 4096; // single characters in blocks, so that making them costs next to nothing
        add(times / block, [text](std::string &out, std::uint64_t) { out.append(block, text.front()); });
        return add(times % block, [text](std::string &out, std::uint64_t) { out += text; });
    }

private:
    friend class GeneratedBuffer;

    struct Piece {
        std::uint64_t times;
        Unit unit;
    };

    std::vector<Piece> pieces;
};

/// Gives out a generated text, some kilobytes at a time.
class GeneratedBuffer : public std::streambuf {
public:
    explicit GeneratedBuffer(GeneratedText generated) : text(std::move(generated)) {}

    std::uint64_t bytes() const noexcept { return given; } ///< so far

protected:
    int_type underflow() override
    {
        constexpr std::size_t enough = 1U << 16U;
        window.clear();
        while (window.size() < enough && at != text.pieces.size()) {
            const GeneratedText::Piece &piece = text.pieces[at];
            if (turn == piece.times) {
                ++at;
                turn = 0;
            } else {
                piece.unit(window, turn++);
            }
        }
        if (window.empty()) {
            return traits_type::eof();
        }
        given += window.size();
        setg(window.data(), window.data(), window.data() + window.size());
        return traits_type::to_int_type(*gptr());
    }

private:
    GeneratedText text;
    std::size_t at = 0;
    std::uint64_t turn = 0;
    std::string window;
    std::uint64_t given = 0;
};

} // namespace dalvo::hostile
