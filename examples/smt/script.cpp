#include "examples/smt/script.h"

#include <algorithm>
#include <cstddef>

namespace examples {

namespace {

constexpr const char *blanks = " \t\r\n";

/// Behind the string, quoted symbol or comment that begins at `at` of `text`; `at` where there is none.
std::size_t skip_quoted(const std::string &text, std::size_t at)
{
    const char start = text[at];
    if (start != '"' && start != '|' && start != ';') {
        return at;
    }
    return std::min(text.find(start == ';' ? '\n' : start, at + 1), text.size() - 1) + 1;
}

/// Behind the command that begins with the parenthesis at `at` of `text`; the end where it is not closed.
std::size_t skip_command(const std::string &text, std::size_t at)
{
    int depth = 0;
    while (at < text.size()) {
        const std::size_t behind = skip_quoted(text, at);
        if (behind != at) {
            at = behind;
            continue;
        }
        depth += text[at] == '(' ? 1 : text[at] == ')' ? -1 : 0;
        ++at;
        if (depth == 0) {
            return at;
        }
    }
    return at;
}

/// The first word of the command whose parenthesis is at `at`.
std::string name_of(const std::string &text, std::size_t at)
{
    const std::size_t start = std::min(text.find_first_not_of(blanks, at + 1), text.size());
    const std::size_t end = std::min(text.find_first_of(" \t\r\n();\"|", start), text.size());
    return text.substr(start, end - start);
}

bool ends_with(const std::string &text, const std::string &end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

} // namespace

std::vector<std::string> script_pieces(const std::string &text)
{
    std::vector<std::string> pieces;
    std::size_t start = 0;
    std::size_t at = 0;
    while (at < text.size()) {
        if (text[at] != '(') {
            at = std::max(skip_quoted(text, at), at + 1);
            continue;
        }
        const std::string name = name_of(text, at);
        at = skip_command(text, at);
        if (name == "exit") {
            break;
        }
        if (name == "check-sat" || name == "check-sat-assuming") {
            pieces.push_back(text.substr(start, at - start));
            start = at;
        }
    }
    pieces.push_back(text.substr(start, at - start));
    return pieces;
}

std::string ScriptRunner::run(const std::string &piece, bool is_last)
{
    std::string printed = evaluate(position + piece);
    const std::size_t last_line = piece.rfind('\n');
    if (last_line == std::string::npos) {
        position += std::string(piece.size(), ' ');
    } else {
        const auto lines =
            std::count(position.begin(), position.end(), '\n') + std::count(piece.begin(), piece.end(), '\n');
        position = std::string(static_cast<std::size_t>(lines), '\n') + std::string(piece.size() - last_line - 1, ' ');
    }
    if (is_last) {
        return printed;
    }
    const bool satisfiable = ends_with("\n" + printed, "\nsat\n");
    const bool unsatisfiable = ends_with("\n" + printed, "\nunsat\n");
    if (satisfiable && settings.model_generation) {
        printed += evaluate("(get-model)");
    }
    if (unsatisfiable && settings.unsat_core_generation != 0) {
        printed += evaluate("(get-unsat-core)");
    }
    if (unsatisfiable && settings.proof_generation) {
        printed += evaluate("(get-proof)");
    }
    if ((satisfiable || unsatisfiable) && settings.verbosity > 0) {
        printed += evaluate("(get-info :all-statistics)");
    }
    return printed;
}

std::string ScriptRunner::evaluate(const std::string &commands)
{
    std::string printed = Z3_eval_smtlib2_string(context, commands.c_str());
    any_error = any_error || printed.rfind("(error", 0) == 0 || printed.find("\n(error") != std::string::npos;
    return printed;
}

} // namespace examples
