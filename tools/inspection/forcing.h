#pragma once

#include <map>
#include <string>
#include <vector>

#include "tools/inspection/settings.h"
#include "tools/inspection/sources.h"

namespace dalvo::tools {

/// Finds out which options keep others from having their way, by experiment: records are filled with and without an
/// assignment and compared. Nothing here knows which options do so, so it holds for whatever the application does.
///
/// The construction fills a record for each option that is assigned; `is_forced` then fills none, `forcing` and
/// `forced_by` one for each other option.
class Forcing {
public:
    /// `assignments` in the order in which they apply, each accepted.
    explicit Forcing(const std::vector<Assignment> &assignments);

    /// The assignment that wins for `name`, the last one; null when there is none.
    const Assignment *winner(const std::string &name) const;

    /// Whether the setting of `name` is another than its own assignment, or the lack of one, would leave.
    bool is_forced(const std::string &name) const;

    /// The winning assignments of other options that each, put together with that of `name`, change its setting.
    std::vector<const Assignment *> forcing(const std::string &name) const;

    /// The options that the winning assignment of `name` forces.
    std::vector<std::string> forced_by(const std::string &name) const;

    /// The settings that all assignments make.
    const std::vector<Setting> &settings() const { return all; }

private:
    const std::string &alone(const std::string &name) const;
    std::string together(const std::string &name, const Assignment &other) const;

    std::vector<Assignment> winners;              // in the order of their options' names
    std::map<std::string, std::size_t> positions; // into winners
    std::vector<Setting> all;
    std::map<std::string, std::string> alone_texts; // by option: the setting that its own assignment alone makes
};

} // namespace dalvo::tools
