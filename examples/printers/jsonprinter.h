#pragma once

#include <iosfwd>
#include <string>

#include "dalvo/configuration/configurationsetter.h"

namespace examples {

/// Writes each setting as a member of a JSON object, with a comma before all but the first; the braces are
/// `write_json`'s. One printer writes one object.
///
/// A float that is none, for which JSON has no number, is the string "inf", "-inf" or "nan". Strings are taken to be
/// UTF-8: each byte that is not part of a character becomes U+FFFD.
class JsonMemberPrinter : public dalvo::ConfigurationSetter::ConfigEntryPrinter {
public:
    void operator()(std::ostream &out, const std::string &name, bool value) const override;
    void operator()(std::ostream &out, const std::string &name, int value) const override;
    void operator()(std::ostream &out, const std::string &name, unsigned int value) const override;
    void operator()(std::ostream &out, const std::string &name, double value) const override;
    void operator()(std::ostream &out, const std::string &name, const std::string &value) const override;

private:
    void write(std::ostream &out, const std::string &name, const std::string &value) const;

    mutable bool first = true; // the operators are const, as a printer without memory would have them
};

/// Writes `settings` as one JSON object, a line a setting, whatever the stream's flags and locale.
void write_json(std::ostream &out, const dalvo::Configuration &settings);

} // namespace examples
