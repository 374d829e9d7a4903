#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "dalvo/export.h"

namespace dalvo::inspect {

/// Where something stands.
struct DALVO_API Place {
    std::string source;         ///< what people call the text: a path, "built-in default", "command line", ...
    std::uint64_t line = 0;     ///< from 1; 0 where there are no lines, as on a command line
    std::size_t column = 0;     ///< of the first byte, in bytes from 1; 0 for a text as a whole
    std::size_t end_column = 0; ///< after the last byte, counted alike

    /// "source:line", or "source" where there are no lines, with control bytes escaped.
    std::string text() const;
};

} // namespace dalvo::inspect
