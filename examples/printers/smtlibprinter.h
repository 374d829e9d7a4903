#pragma once

#include <iosfwd>
#include <string>

#include "dalvo/configuration/configurationsetter.h"

namespace examples {

/// Writes each setting as a line of an SMT-LIB script:
///
///     setter.dump(&settings, std::cout, SmtlibPrinter());
///
///     (set-option :proof_generation false)
///     (set-option :dpll.restart_geometric_factor 1.5)
///     (set-option :debug.api_call_trace_filename "calls.smt2")
///
/// A negative number, and a float that is none, has no literal in SMT-LIB: -1, -0.5, inf, -inf and nan are written so,
/// which makes them symbols. A string can hold any byte. The quote is doubled, as SMT-LIB has it. Control bytes but for
/// tab and line ends, which no string may hold, are written as the theory of strings writes them, as in "\u{0}"; and
/// so that this can be undone, "\u{5c}" stands for a backslash in front of a "u".
class SmtlibPrinter : public dalvo::ConfigurationSetter::ConfigEntryPrinter {
public:
    /// Under which name the five settings go that SMT-LIB has options for: verbosity, random_seed, model_generation,
    /// proof_generation and unsat_core_generation.
    enum class Names {
        own,
        standard, ///< as in (set-option :random-seed 7); numbers unsigned, unsat cores true or false
    };

    explicit SmtlibPrinter(Names names_of_settings = Names::own) : names(names_of_settings) {}

    /// Each throws std::invalid_argument, with nothing written, when `name` is no keyword: empty, or with a byte other
    /// than letters, digits and ~!@$%^&*_-+=<>.?/
    void operator()(std::ostream &out, const std::string &name, bool value) const override;
    void operator()(std::ostream &out, const std::string &name, int value) const override;
    void operator()(std::ostream &out, const std::string &name, unsigned int value) const override;
    void operator()(std::ostream &out, const std::string &name, double value) const override;
    void operator()(std::ostream &out, const std::string &name, const std::string &value) const override;

private:
    void write(std::ostream &out, const std::string &name, const std::string &value) const;

    Names names;
};

} // namespace examples
