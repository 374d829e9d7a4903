#include "tools/inspection/forcing.h"

namespace dalvo::tools {

Forcing::Forcing(const std::vector<Assignment> &assignments)
{
    std::map<std::string, Assignment> last;
    for (const Assignment &assignment : assignments) {
        last.insert_or_assign(assignment.name, assignment);
    }
    for (const auto &[name, assignment] : last) {
        positions.emplace(name, winners.size());
        winners.push_back(assignment);
    }
    all = settings_of(record_of(winners));
    for (const Setting &untouched : settings_of(Configuration())) {
        const Assignment *const own = winner(untouched.name);
        const std::string text =
            own != nullptr ? setting_named(settings_of(record_of({*own})), untouched.name).text() : untouched.text();
        alone_texts.emplace(untouched.name, text);
    }
}

const Assignment *Forcing::winner(const std::string &name) const
{
    const auto found = positions.find(name);
    return found != positions.end() ? &winners[found->second] : nullptr;
}

bool Forcing::is_forced(const std::string &name) const
{
    return setting_named(all, name).text() != alone(name);
}

std::vector<const Assignment *> Forcing::forcing(const std::string &name) const
{
    std::vector<const Assignment *> found;
    const std::string own = alone(name);
    for (const Assignment &other : winners) {
        if (other.name != name && together(name, other) != own) {
            found.push_back(&other);
        }
    }
    return found;
}

std::vector<std::string> Forcing::forced_by(const std::string &name) const
{
    std::vector<std::string> forced;
    if (const Assignment *const forcer = winner(name)) {
        for (const Setting &setting : all) {
            if (setting.name != name && together(setting.name, *forcer) != alone(setting.name)) {
                forced.push_back(setting.name);
            }
        }
    }
    return forced;
}

/// The setting of `name` that its own assignment makes, with no other. Throws std::out_of_range when there is none.
const std::string &Forcing::alone(const std::string &name) const
{
    return alone_texts.at(name);
}

/// The setting of `name` that its own assignment and `other` make.
std::string Forcing::together(const std::string &name, const Assignment &other) const
{
    std::vector<Assignment> both{other};
    if (const Assignment *const own = winner(name)) {
        both.push_back(*own);
    }
    return setting_named(settings_of(record_of(both)), name).text();
}

} // namespace dalvo::tools
