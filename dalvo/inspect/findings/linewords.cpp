#include "dalvo/inspect/findings/linewords.h"

#include <algorithm>

#include "dalvo/utils/editdistance.h"
#include "dalvo/utils/str.h"

namespace dalvo::inspect {

namespace {

std::string_view stripped(std::string_view text)
{
    return str::stripped(text, str::is_space);
}

/// The offset of the first of `mark` that stands at the start of `value` or after white space; npos where there is none.
std::size_t mark_start(std::string_view value, std::string_view mark)
{
    std::size_t at = value.find(mark);
    while (at != std::string_view::npos && at > 0 && !str::is_space(value[at - 1])) {
        at = value.find(mark, at + 1);
    }
    return at;
}

/// The offset of what looks like the start of a comment in a value that its option cannot read: there a mark within a
/// word counts as well, since "1#x" is no text that somebody meant.
std::size_t any_comment_start(std::string_view value)
{
    const std::size_t usual = std::min({mark_start(value, "#"), mark_start(value, ";"), mark_start(value, "//")});
    return usual != std::string_view::npos ? usual : std::min({value.find('#'), value.find(';'), value.find("//")});
}

bool is_digit(char c)
{
    return c >= '0' && c <= '9';
}

/// Takes the digits at the start of `text` off; whether there are any.
bool take_digits(std::string_view &text)
{
    const auto end = std::find_if_not(text.begin(), text.end(), is_digit);
    const auto count = static_cast<std::size_t>(end - text.begin());
    text.remove_prefix(count);
    return count != 0;
}

/// Takes one of `characters` at the start of `text` off, if it is there.
bool take_one(std::string_view &text, std::string_view characters)
{
    const bool is_there = !text.empty() && characters.find(text.front()) != std::string_view::npos;
    text.remove_prefix(is_there ? 1 : 0);
    return is_there;
}

/// Whether `text` is a decimal, with a point and an exponent where `is_float`.
bool is_decimal(std::string_view text, bool is_float)
{
    take_one(text, "+-");
    bool has_digits = take_digits(text);
    if (is_float) {
        if (take_one(text, ".")) {
            has_digits = take_digits(text) || has_digits;
        }
        if (has_digits && take_one(text, "eE")) {
            take_one(text, "+-");
            has_digits = take_digits(text);
        }
    }
    return has_digits && text.empty();
}

} // namespace

std::size_t comment_start(std::string_view value) noexcept
{
    return mark_start(value, "#");
}

std::string comment_mark(std::string_view comment)
{
    return std::string(comment.substr(0, comment.front() == '/' ? 2 : 1));
}

bool is_quoted(std::string_view value) noexcept
{
    return value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
}

ValueParts parts_of(std::string_view value, const OptionInfo &option)
{
    const std::size_t start = any_comment_start(value);
    const std::string_view comment = start != std::string_view::npos ? value.substr(start) : std::string_view();
    const std::string_view before = stripped(value.substr(0, start));
    const bool has_quotes = is_quoted(before);
    const std::string_view core = has_quotes ? stripped(before.substr(1, before.size() - 2)) : before;
    const bool is_readable = !std::holds_alternative<std::monostate>(option.parse(core));
    return {core, has_quotes ? before : std::string_view(), comment, is_readable};
}

std::vector<std::string> bool_words_near(std::string_view value)
{
    constexpr struct {
        const char *word;
        const char *meant;
    } words[] = {{"true", "true"}, {"false", "false"}, {"yes", "true"},      {"no", "false"},      {"on", "true"},
                 {"off", "false"}, {"enable", "true"}, {"disable", "false"}, {"t", "true"},        {"f", "false"},
                 {"y", "true"},    {"n", "false"},     {"enabled", "true"},  {"disabled", "false"}};
    const std::string folded = str::folded(value);
    const std::size_t limit = folded.size() / 2;
    std::size_t nearest = limit + 1;
    std::string meant;
    for (const auto &row : words) {
        const std::size_t most = std::min<std::size_t>(limit, std::string_view(row.word).size() / 2);
        const std::size_t distance = str::edit_distance(folded, row.word, most);
        if (distance <= most && distance < nearest) {
            nearest = distance;
            meant = row.meant;
        }
    }
    return meant.empty() ? std::vector<std::string>() : std::vector<std::string>{meant};
}

std::string size_problem(std::string_view value, OptionType type)
{
    const bool is_number = type == OPT_INT || type == OPT_FLOAT;
    if (!is_number || !is_decimal(value, type == OPT_FLOAT)) {
        return "";
    }
    return type == OPT_INT && value.front() == '-' ? "too small" : "too large";
}

std::string kind_of(const OptionInfo &option)
{
    const bool is_number = option.type == OPT_INT || option.type == OPT_FLOAT;
    return (is_number ? "a 32-bit " : "a ") + type_name(option.type);
}

} // namespace dalvo::inspect
