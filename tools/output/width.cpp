#include "tools/output/width.h"

#include <utf8proc.h>

#include <algorithm>

#include "dalvo/inspect/words/printable.h"

namespace dalvo::tools {

int columns_of(char32_t code)
{
    return utf8proc_charwidth(static_cast<utf8proc_int32_t>(code));
}

std::size_t columns_of(std::string_view text)
{
    std::size_t columns = 0;
    while (!text.empty()) {
        const inspect::CodePoint first = inspect::first_code_point(text);
        columns += static_cast<std::size_t>(std::max(0, columns_of(static_cast<char32_t>(first.code))));
        text.remove_prefix(std::max<std::size_t>(first.size, 1));
    }
    return columns;
}

} // namespace dalvo::tools
