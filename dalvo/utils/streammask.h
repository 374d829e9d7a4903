#pragma once

#include <ios>

namespace dalvo {

/// Has a stream throw what its buffer throws while this lives, and nothing else, whatever exceptions its owner has asked
/// it for: so a failure ends a text, and memory that runs out in the buffer is not taken for the text's end. The owner's
/// mask is set again at the end. A stream that has failed already throws nothing.
class StreamMask {
public:
    explicit StreamMask(std::ios &stream) : ios(stream), owners_mask(stream.exceptions())
    {
        ios.exceptions(ios.bad() ? std::ios_base::goodbit : std::ios_base::badbit);
    }

    StreamMask(const StreamMask &) = delete;
    StreamMask &operator=(const StreamMask &) = delete;

    ~StreamMask()
    {
        try {
            ios.exceptions(owners_mask);
        } catch (...) { // where the stream's state meets the mask, which is set nevertheless
        }
    }

private:
    std::ios &ios;
    std::ios_base::iostate owners_mask;
};

} // namespace dalvo
