#include <algorithm>

#include "tools/inspection/check_text.h"
#include "tools/inspection/check_trial.h"

namespace dalvo::tools {

namespace {

/// For each option, the option that switches its theory on: its name's longest prefix, up to a dot, with "enabled"
/// behind it; itself where that is its name; none where there is no such option.
std::vector<std::size_t> find_switches()
{
    std::unordered_map<std::string_view, std::size_t> positions;
    for (const OptionInfo &option : all_options()) {
        positions.emplace(option.name, positions.size());
    }
    std::vector<std::size_t> found;
    for (const OptionInfo &option : all_options()) {
        found.push_back(none);
        for (std::size_t dot = option.name.rfind('.'); dot != std::string::npos && found.back() == none;
             dot = dot > 0 ? option.name.rfind('.', dot - 1) : std::string::npos) {
            const auto at = positions.find(option.name.substr(0, dot + 1) + "enabled");
            found.back() = at != positions.end() ? at->second : none;
        }
    }
    return found;
}

/// What `find_switches` finds, once for all texts.
const std::vector<std::size_t> &switches()
{
    static const std::vector<std::size_t> found = find_switches();
    return found;
}

/// Looks at one section after the other, the unnamed one first: what it says holds in all others.
class SectionChecker {
public:
    explicit SectionChecker(CheckedText &target) : text(target), own(all_options().size(), none), unnamed(own) {}

    void check(const CheckedSection &section)
    {
        file(section);
        for (const std::size_t option : options) {
            if (verdict_of(own[option]) == Verdict::rejected) {
                text.mark_value(own[option], Problem::out_of_range);
            }
        }
        if (!options.empty()) {
            check_effects();
        }
    }

    /// Makes the section just checked the one that always holds.
    void keep_as_unnamed() { unnamed = own; }

private:
    /// Finds each option's last assignment.
    void file(const CheckedSection &section)
    {
        for (const std::size_t option : options) {
            own[option] = none;
        }
        options.clear();
        for (const std::size_t position : section.assignments) {
            const std::size_t option = text.assignments[position].option;
            if (option == none) {
                continue;
            }
            if (own[option] == none) {
                options.push_back(option);
            } else {
                text.mark_name(own[option], Problem::replaced, position);
            }
            own[option] = position;
        }
    }

    void check_effects()
    {
        for (const std::size_t option : tried) {
            if (own[option] == none) {
                assign(option);
            }
        }
        for (const std::size_t option : options) {
            assign(option);
        }
        tried = options;
        trial.run();
        for (const std::size_t option : options) {
            if (effective(option) == none) {
                continue;
            }
            if (trial.is_forced(option)) {
                check_forced(option);
            }
            check_switch(option);
        }
    }

    /// The assignment of an option that applies when the section is active; none when there is none or it is wrong.
    std::size_t effective(std::size_t option) const
    {
        const std::size_t position = own[option] != none ? own[option] : unnamed[option];
        return position != none && verdict_of(position) == Verdict::accepted ? position : none;
    }

    void assign(std::size_t option)
    {
        const std::size_t position = effective(option);
        if (position != none) {
            trial.assign(option, text.assignments[position].value);
        } else {
            trial.withdraw(option);
        }
    }

    /// Marks the section's assignment of `option` when that of another option forces it.
    void check_forced(std::size_t option)
    {
        const std::size_t forcer = find_forcer(option);
        if (forcer != none) {
            text.mark_name(own[option], Problem::forced, effective(forcer));
            text.add_detail(trial.setting(option).text());
        }
    }

    /// The option that forces `option`; those that did so last are tried first.
    std::size_t find_forcer(std::size_t option)
    {
        const auto forces = [&](std::size_t other) {
            return other != option && effective(other) != none &&
                   pairs.is_forced(option, value_of(option), other, value_of(other));
        };
        const auto recent = std::find_if(forcers.begin(), forcers.end(), forces);
        if (recent != forcers.end()) {
            std::rotate(forcers.begin(), recent, recent + 1);
            return forcers.front();
        }
        for (std::size_t other = 0; other < own.size(); ++other) {
            if (forces(other)) {
                forcers.insert(forcers.begin(), other);
                return other;
            }
        }
        return none;
    }

    void check_switch(std::size_t option)
    {
        const std::size_t enabled = switches()[option];
        if (enabled == none || enabled == option || effective(enabled) == none) {
            return;
        }
        const bool *const is_on = std::get_if<bool>(&trial.setting(enabled).value);
        if (is_on != nullptr && !*is_on) {
            text.mark_name(own[option], Problem::disabled_theory, effective(enabled));
        }
    }

    Verdict verdict_of(std::size_t position) const { return text.assignments[position].verdict; }
    std::string_view value_of(std::size_t option) const { return text.assignments[effective(option)].value; }

    CheckedText &text;
    Trial trial;
    PairTrials pairs;
    std::vector<std::size_t> forcers; // options that forced others, the last one first
    std::vector<std::size_t> own;     // by option: the section's last assignment
    std::vector<std::size_t> unnamed; // by option: the unnamed section's last assignment
    std::vector<std::size_t> options; // that the section assigns to
    std::vector<std::size_t> tried;   // that the section tried before assigned to: the trial holds their values
};

} // namespace

void check_sections(CheckedText &text)
{
    SectionChecker checker(text);
    checker.check(text.sections.front());
    checker.keep_as_unnamed();
    for (std::size_t section = 1; section < text.sections.size(); ++section) {
        checker.check(text.sections[section]);
    }
}

} // namespace dalvo::tools
