#include "dalvo/inspect/knowledge/optioninfo.h"

#include <charconv>
#include <string_view>

namespace dalvo::inspect {

namespace {

/// Reads "- N : meaning"; does nothing for a line of another form.
void read_code(std::string_view line, std::vector<Code> &codes)
{
    if (line.substr(0, 2) != "- ") {
        return;
    }
    Code code{};
    const auto [end, failure] = std::from_chars(line.data() + 2, line.data() + line.size(), code.value);
    const std::size_t colon = line.find_first_not_of(' ', static_cast<std::size_t>(end - line.data()));
    if (failure != std::errc() || colon == std::string_view::npos || line[colon] != ':') {
        return;
    }
    const std::size_t meaning = line.find_first_not_of(' ', colon + 1);
    if (meaning != std::string_view::npos) {
        code.meaning = line.substr(meaning);
    }
    codes.push_back(code);
}

} // namespace

std::string OptionInfo::accepted() const
{
    if (type == OPT_BOOL) {
        return "true or false";
    }
    std::string words = AppliedOption::accepted();
    if (words != "any") {
        return words;
    }
    return type == OPT_INT ? "any integer" : type == OPT_FLOAT ? "any number" : "any text";
}

std::string OptionInfo::accepted_texts() const
{
    return type == OPT_BOOL ? "true, yes, on, 1, false, no, off or 0" : accepted();
}

Value OptionInfo::parse(std::string_view text) const
{
    return OptionParser::parse_value(text, type, BOOL_STYLE_WORDS);
}

std::vector<Code> codes_of(const std::string &help)
{
    std::vector<Code> codes;
    for (std::size_t start = 0; start < help.size();) {
        const std::size_t end = std::min(help.find('\n', start), help.size());
        read_code(std::string_view(help).substr(start, end - start), codes);
        start = end + 1;
    }
    return codes;
}

} // namespace dalvo::inspect
