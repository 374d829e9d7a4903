#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "dalvo/configuration/configurationsetter.h"
#include "dalvo/export.h"
#include "dalvo/inspect/knowledge/optioninfo.h"

namespace dalvo::inspect {

struct Links;

/// What a host may say of an option beside its name, type, group and help. All of it can be left out.
struct OptionExtras {
    std::optional<std::string> default_text = {}; ///< the default, as a configuration text would write it
    AppliedOption::Range range = {};              ///< the values accepted; std::monostate: all of the type
    std::vector<Code> codes = {}; ///< of an int; where empty, those that the help lists as "- 1 : meaning"
    bool codes_add_up = false;    ///< whether the codes are flags, to be added up
    std::vector<Requirement> matters_when = {}; ///< on options that are known already
    std::vector<Need> needs = {};               ///< on options that are known already
};

/// Everything that is known about options: those of the library, and those that a host describes; and the default text.
///
/// Example:
///
///     Catalogue catalogue;
///     catalogue.describe("cache.entries", OPT_INT, "Cache options:", "Entries of the cache.", {"1000", at_least(1)});
///     catalogue.find("cache.entries")->accepted()        // "at least 1"
///     Run run(catalogue);                                // texts may assign to cache.entries now
///
/// Names and texts are any bytes. A
/// catalogue may be read by many threads at once while none describes an option.
class DALVO_API Catalogue {
public:
    /// The options of the library, and the built-in default text.
    Catalogue();

    /// The options of the library, and another default text, `default_text`. What is wrong with it is found when it is
    /// checked.
    explicit Catalogue(std::string default_text);

    Catalogue(const Catalogue &) = delete;
    Catalogue &operator=(const Catalogue &) = delete;
    ~Catalogue();

    /// The library's options and the built-in text, for hosts that describe none: one for the whole process.
    static const Catalogue &standard();

    /// Adds an option of the host's own, or one of the names that the library reads and does not register: `name`, its
    /// `type`, its help `group` and `help`, and `extras`. The reference is good until the catalogue ends.
    /// Throws OptionParser::error, and then adds nothing: "option registered twice " + name; "unknown type of option " +
    /// name; "option of another type " + name, where the library reads the name with another type; "range of another
    /// type for option " + name; "codes of another type for option " + name; "invalid value for option " + name, for a
    /// default that is not of the type or out of the range; "unknown option " + the other one's name, with a hint where
    /// there is one, for a relation.
    const OptionInfo &describe(const std::string &name, OptionType type, const std::string &group,
                               const std::string &help, const OptionExtras &extras = {});

    /// The options in the order of registration: the library's, then the host's. Owned by the catalogue.
    const std::deque<OptionInfo> &options() const noexcept { return list; }

    /// The option `name`, owned by the catalogue; null where there is none.
    const OptionInfo *find(std::string_view name) const noexcept;

    /// The position of option `name` in `options()`; npos where there is none.
    std::size_t position(std::string_view name) const noexcept;

    /// What `position` gives for a name that is none.
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);

    /// The options that somebody who wrote `name` may mean, the likeliest first, at most `most`: what other programs
    /// call so ("seed", ":produce-models"), and what it is likely a slip for.
    std::vector<std::string> suggestions(const std::string &name, std::size_t most = 3) const;

    /// The default text: the built-in one, or the one that the catalogue was made with.
    const std::string &default_text() const noexcept { return text; }

    /// Whether the option at `position`, which is one, is a host's and was described with a default, which is in force where nothing is
    /// assigned.
    bool has_described_default(std::size_t position) const noexcept
    {
        return position >= own_count && described_defaults[position - own_count];
    }

    /// Registers all options with `setter`, which has none yet, by `initialize_options` and `add_option`.
    void register_options(ConfigurationSetter &setter) const;

    /// The positions of the library's options in the order of `ConfigurationSetter::dump`, then those of the host's.
    const std::vector<std::size_t> &dump_order() const noexcept { return order; }

    /// The relations by position; for the library's own use.
    const Links &links() const noexcept { return *relations; }

private:
    void add(OptionInfo option);
    void add_described(OptionInfo option, bool has_default);

    std::string text;
    std::deque<OptionInfo> list;
    std::unordered_map<std::string_view, std::size_t> positions; // keys are views of OptionInfo::name
    std::size_t own_count = 0;                                   // of the library's options, which come first
    std::vector<bool> described_defaults;                        // of the host's
    std::vector<std::size_t> order;
    std::unique_ptr<const Links> relations;
};

} // namespace dalvo::inspect
