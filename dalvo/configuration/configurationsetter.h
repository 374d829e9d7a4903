#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

#include "dalvo/configuration/configuration.h"
#include "dalvo/export.h"
#include "dalvo/options/optionparser.h"
#include "dalvo/utils/hash.h"
#include "dalvo/utils/hashmap.h"

namespace dalvo {

/// Turns option assignments into the record that the solver reads.
///
/// A host registers the catalogue once, feeds assignments in any order, and fills records as often as it likes:
///
///     ConfigurationSetter setter;
///     setter.initialize_options();
///     setter.load_default();                             // the built-in text
///     setter.load(file, 2);                              // a configuration text with sections
///     setter.set_active_config("fast");
///
///     Configuration settings;
///     setter.update_config(&settings);                   // throws OptionParser::error for what cannot be
///     setter.dump(&settings, std::cout, "fast");         // the settings as a text that `load` reads
///
/// A filling first replays the assignments of the unnamed section, then those of the active one, so that a section's
/// value wins over a direct `set_option`, and the active section's over the unnamed one's. Values are looked at when
/// they are replayed and applied, never while a text is read. Nothing is rolled back: what was filed or stored before
/// a failure stays.
///
/// Names, values and texts are byte strings, compared byte for byte; they may hold any byte where nothing else is
/// said. One thread at a time uses a setter; distinct setters share nothing.
class DALVO_API ConfigurationSetter {
public:
    /// One assignment read from a configuration text.
    struct OptEntry {
        std::string name;   ///< option name as written, stripped; may be empty
        std::string value;  ///< value text, stripped, unparsed; may be empty
        std::int32_t level; ///< the level given to `load` for the whole text
    };

    /// Receives the settings that `dump` writes, one call each, by the type in which the option is printed.
    ///
    /// All that an operator is given is borrowed for the call. What it throws passes through `dump`, and the settings
    /// behind it are not handed over. docs/embedding.md has a printer, and what it prints. In each operator `name` is
    /// the option's; the stream is the one given to `dump`.
    class DALVO_API ConfigEntryPrinter {
    public:
        virtual ~ConfigEntryPrinter();

        /// Takes a switch: its `name` and `value`, for `out`.
        virtual void operator()(std::ostream &out, const std::string &name, bool value) const = 0;

        /// Takes an integer: its `name` and `value` (any int32), for `out`.
        virtual void operator()(std::ostream &out, const std::string &name, int value) const = 0;

        /// Takes one of the four integers that are printed unsigned, for `out`: `verbosity`,
        /// `theory.euf.dyn_ack_threshold`, `theory.euf.dyn_ack_limit` and `theory.la.lazy_expl_threshold` by `name`. A
        /// negative field comes as `value` modulo 2^32.
        virtual void operator()(std::ostream &out, const std::string &name, unsigned int value) const = 0;

        /// Takes a number: its `name` and `value` (any double; NaN and infinities, too), for `out`.
        virtual void operator()(std::ostream &out, const std::string &name, double value) const = 0;

        /// Takes a text: its `name` and `value` (any bytes, may be empty, may hold NUL), for `out`.
        virtual void operator()(std::ostream &out, const std::string &name, const std::string &value) const = 0;
    };

    /// Section name to the section's assignments in the order in which they were read; "" is the unnamed section,
    /// which always applies.
    using SectionTable = // NOLINTNEXTLINE(modernize-use-transparent-functors): the type is named by hosts
        hsh::HashMap<std::string, std::vector<OptEntry>, hsh::hash<std::string>, std::equal_to<std::string>>;

    /// No option registered, no section, no active section.
    ConfigurationSetter();

    ConfigurationSetter(const ConfigurationSetter &) = delete;
    ConfigurationSetter &operator=(const ConfigurationSetter &) = delete;
    virtual ~ConfigurationSetter();

    /// Registers the catalogue of options in its help groups. To be called once, before any other operation. Throws
    /// OptionParser::error "option registered twice " + name, where the name is taken, as at a second call. The options
    /// before it stay registered.
    void initialize_options();

    /// Gives option `name` the value that `value` says (both any bytes, may be empty, may hold NUL; read during the
    /// call), at once. `level` (any int32) is kept with the value and decides nothing. A later replay of a text that
    /// assigns to the option wins. Throws OptionParser::error as `OptionParser::parse_option` does: "unknown option " +
    /// name, with its hint after it where there is one, or "invalid value for option " + name. The option's earlier
    /// value then stands.
    void set_option(const std::string &name, const std::string &value, std::int32_t level);

    /// Makes `name` (any bytes, may hold NUL; copied) the active section, "" for none. The section need not exist, now
    /// or later.
    void set_active_config(const std::string &name);

    /// Reads a configuration text from `in` (borrowed for the call; any bytes) to the stream's end and files its
    /// assignments into their sections, after what these hold already; `level` (any int32) goes with each of them.
    /// docs/format.md describes the text. Throws OptionParser::error "bad format of configuration file", with the
    /// stripped line as its `option`, at the first malformed line. What the lines before it filed stays then. A stream
    /// that fails ends the text, even where its own exception mask would have it throw; its state tells.
    void load(std::istream &in, std::int32_t level);

    /// Reads the built-in default text, `dalvo_default_config`, with level 3. Throws what `load` throws, with the same
    /// left filed.
    void load_default();

    /// Replays the unnamed section and then the active one, if there is one of that name, into the parser.
    /// `update_config` does so itself. Throws what `set_option` throws at the first entry that fails; the entries
    /// before it stay applied.
    void parse_active_config();

    /// Replays as `parse_active_config` does, then reads each option that has a value and stores it into its field of
    /// `*cfg` (not null, owned by the caller); other fields stay, but for those that an option forces: `interpolation`,
    /// `unsat_core_generation` and `theory.arr.enable_nonlinear_strat` write more than their own field.
    /// Throws what the replay throws, then with `*cfg` untouched; OptionParser::error "invalid value for option " +
    /// name at the first value out of its range, with the options before it stored and its own field left alone (but
    /// for `unsat_core_generation`, which is stored first). The error's `value` is the number as it was read: an int in
    /// decimal, a float in at most six digits. Throws std::bad_alloc when memory runs out, with the same left stored.
    void update_config(Configuration *cfg);

    /// Hands each setting in `*cfg` (not null, only read) to `printer`, with `out`, in a fixed order, then flushes
    /// `out`. All three are borrowed for the call. What the printer throws passes through, with what it wrote until
    /// then in the stream.
    void dump(const Configuration *cfg, std::ostream &out, const ConfigEntryPrinter &printer) const;

    /// Writes the settings in `*cfg` (not null, only read) to `out` as a configuration text: the header "[section]",
    /// unless `section` (any bytes) is empty, then a line "name = value" for each setting. `section` is written as it is. Numbers
    /// follow the stream's flags, precision and locale; its boolalpha flag is set, and stays so. Failures are left in
    /// the stream's state; a stream that its owner has asked to throw throws, and std::bad_alloc is thrown when memory
    /// runs out.
    void dump(const Configuration *cfg, std::ostream &out, const std::string &section) const;

    /// The parser underneath, owned by the setter and good until the setter ends. Through it a host registers options
    /// of its own, among them the names that `update_config` reads and the catalogue leaves out, and reads what is
    /// registered and set.
    OptionParser &options() noexcept { return parser; }

    /// The same, to be read.
    const OptionParser &options() const noexcept { return parser; }

    /// What the texts read so far have filed, to be read. Owned by the setter and good until the setter ends; each
    /// `load` and each replay may add to it.
    const SectionTable &sections() const noexcept { return configs; }

    /// Whether a text that was read names section `name` (any bytes) in a header; "" is the unnamed section, which is
    /// there after the first `load` or replay.
    bool has_section(const std::string &name) const noexcept { return configs.find(name) != nullptr; }

private:
    void replay(const std::vector<OptEntry> &entries);

    OptionParser parser;
    SectionTable configs;
    std::string active_config;
};

} // namespace dalvo
