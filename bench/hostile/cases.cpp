#include "bench/hostile/cases.h"

namespace dalvo::hostile {

namespace {

using namespace std::string_view_literals;

constexpr const char *bad_format = "bad format of configuration file";
constexpr const char *invalid_value = "invalid value for option ";
constexpr const char *unknown_option = "unknown option ";

/// Appends the n-th of 2^15 names of one hash value: "af" and "ba" weigh the same (5 * 'a' + 'f' = 5 * 'b' + 'a').
void append_colliding(std::string &out, std::uint64_t n)
{
    for (unsigned place = 0; place < 15; ++place) {
        out += (n >> place & 1U) != 0 ? "af" : "ba";
    }
}

/// Appends the n-th of names of one hash value, of which there is no end: it leaves out what stands behind a NUL.
void append_behind_nul(std::string &out, std::uint64_t n)
{
    out += '\0';
    out += std::to_string(n);
}

void append_number(std::string &out, std::uint64_t n)
{
    out += std::to_string(n);
}

/// Headers, each with one name and `below` beneath it.
GeneratedText sections(std::uint64_t count, void (*append_name)(std::string &, std::uint64_t),
                       std::string_view below = "")
{
    return GeneratedText().add(count, [append_name, below](std::string &out, std::uint64_t n) {
        out += '[';
        append_name(out, n);
        out += "]\n";
        out += below;
    });
}

/// A header of `count` names and `assignments` lines beneath it.
GeneratedText one_header(std::uint64_t count, std::uint64_t assignments)
{
    return GeneratedText()
        .add("[")
        .add(count - 1, [](std::string &out, std::uint64_t n) { out += std::to_string(n) + ","; })
        .add("last]\n")
        .add("a=1\n", assignments);
}

/// One line, for the most part made of one character.
GeneratedText line(std::string_view before, std::string_view character, std::uint64_t count, std::string_view behind)
{
    return GeneratedText().add(before).add(character, count).add(behind);
}

void add_lines(std::vector<Case> &all, std::uint64_t size)
{
    // clang-format off
    all.push_back({"value",                 line("a = ", "v", size, "\n"),  {1, 1}});
    all.push_back({"value-without-newline", line("a = ", "v", size, ""),    {1, 1}});
    all.push_back({"name",                  line("", "n", size, " = 1\n"),  {1, 1}});
    all.push_back({"name-without-newline",  line("", "n", size, ""),        {1, 1}});
    all.push_back({"header",                line("[", "s", size, "]\n"),    {2, 0}});
    all.push_back({"header-without-newline", line("[", "s", size, "]"),     {2, 0}});
    all.push_back({"header-not-closed",     line("[", "s", size, "\n"),     {1, 0, bad_format}});
    all.push_back({"comment",               line("#", "c", size, "\n"),     {1, 0}});
    all.push_back({"comment-without-newline", line("#", "c", size, ""),     {1, 0}});
    all.push_back({"blanks",                line("", " ", size, "\n"),      {1, 0}});
    all.push_back({"NULs",                  line("", "\0"sv, size, ""),     {1, 1}});
    all.push_back({"equals-signs",          line("", "=", size, "\n"),      {1, 1}});
    all.push_back({"newlines",              line("", "\n", size / 10, ""),  {1, 0}});
    // clang-format on
}

void add_sections(std::vector<Case> &all, std::uint64_t shrink)
{
    const std::uint64_t million = 1000000 / shrink;
    // clang-format off
    all.push_back({"empty-sections",       sections(10 * million, append_number),          {1 + 10 * million, 0}});
    all.push_back({"sections-of-one-line", sections(10 * million, append_number, "a\n"),
                   {1 + 10 * million, 10 * million}});
    all.push_back({"one-section-opened-again", GeneratedText().add("[s]\n", million),      {2, 0}});
    all.push_back({"one-header",           one_header(million, 0),                         {1 + million, 0}});
    all.push_back({"one-header-1-line",    one_header(million, 1),                         {1 + million, million}});
    all.push_back({"one-header-10-lines",  one_header(million, 10),
                   {1 + million, 10 * million}});
    all.push_back({"one-name-repeated",    line("[a", ",a"sv, 10 * million, "]\n"),        {2, 0}});
    all.push_back({"one-name-repeated-3-lines", line("[a", ",a"sv, 10 * million, "]\na\na\na\n"),
                   {2, 3 * (10 * million + 1)}});
    // clang-format on
    for (const std::uint64_t count : {1000U, 10000U, 30000U}) {
        const std::uint64_t names = count / shrink;
        const std::string suffix = std::to_string(count);
        // clang-format off
        all.push_back({"one-bucket-" + suffix,            sections(names, append_colliding),  {1 + names, 0}});
        all.push_back({"one-bucket-behind-NUL-" + suffix, sections(names, append_behind_nul), {1 + names, 0}});
        // clang-format on
    }
}

void add_assignments(std::vector<Case> &all, std::uint64_t shrink)
{
    const std::uint64_t count = 10000000 / shrink;
    // clang-format off
    all.push_back({"tiny-assignments",    GeneratedText().add("a=1\n", count), {1, count}});
    all.push_back({"tinier-assignments",  line("", "=\n"sv, count, ""),        {1, count}});
    all.push_back({"applied-assignments", GeneratedText().add("verbosity=1\n", count), {1, count, "", true}});
    // clang-format on
}

/// Values and names that are looked at: errors hold them several times.
void add_rejected(std::vector<Case> &all, std::uint64_t size)
{
    // clang-format off
    all.push_back({"unknown-option", line("", "n", size, "\n"),               {1, 1, unknown_option, true}});
    all.push_back({"int-of-digits",  line("verbosity = ", "9", size, "\n"),   {1, 1, invalid_value, true}});
    all.push_back({"float-of-zeros", line("dpll.restart_geometric_factor = 0.", "0", size, "1\n"), {1, 1, "", true}});
    all.push_back({"text-of-commas", line("printer.defines_prefix = ", ",", size, "\n"),           {1, 1, "", true}});
    // clang-format on
}

} // namespace

std::vector<Case> cases(std::uint64_t shrink)
{
    std::vector<Case> all;
    all.push_back({"nothing", GeneratedText(), {}});
    add_lines(all, 1000000000 / shrink);
    add_sections(all, shrink);
    add_assignments(all, shrink);
    add_rejected(all, 200000000 / shrink);
    return all;
}

} // namespace dalvo::hostile
