#pragma once

#include <cstdint>
#include <deque>
#include <iosfwd>
#include <string>
#include <string_view>
#include <unordered_map>
#include <variant>

#include "dalvo/export.h"
#include "dalvo/utils/exception.h"

namespace dalvo {

/// The kind of value that an option takes. Code 2 is not used.
enum OptionType : int {
    OPT_BOOL = 0,  ///< boolean
    OPT_INT = 1,   ///< 32-bit signed integer
    OPT_FLOAT = 3, ///< 32-bit float
    OPT_STR = 4,   ///< byte string
};

/// Which texts a parser takes for a boolean. Letters count in any case.
enum OptionBoolStyle : int {
    BOOL_STYLE_BARE = 0,  ///< as BOOL_STYLE_WORDS, and the empty text, a bare option, means true
    BOOL_STYLE_PLAIN = 1, ///< "true" and "false" alone
    BOOL_STYLE_WORDS = 2, ///< "true", "yes", "on", "1" and "false", "no", "off", "0"
};

/// A store of typed options: each is registered once by name, given its value as text, and read back typed.
///
/// Example:
///
///     OptionParser options(BOOL_STYLE_WORDS);
///     options.set_cur_help_group("Search options:");
///     options.add_option("restarts", OPT_INT, "Number of restarts.");
///     options.parse_option("restarts", "12", 0);
///     std::int32_t restarts = 0;
///     options.get_int_option("restarts", &restarts);     // true, restarts is 12
///
/// Names and texts are byte strings; they may hold any byte, NUL included, and are compared byte for byte.
class DALVO_API OptionParser {
public:
    /// A failure that concerns an option.
    class DALVO_API error : public Exception {
    public:
        /// The message reads `msg`, ": ", `option_name`, ", value: ", `value_text` and, unless `command` is empty,
        /// ", command-line: ", `command`. All four are copied as they are: any bytes, may be empty, may hold NUL, at which
        /// `what()` ends.
        error(const std::string &msg, const std::string &option_name, const std::string &value_text,
              const std::string &command);

        std::string option;       ///< name of the option, or the piece of text at fault
        std::string value;        ///< the rejected value as text; may be empty
        std::string command_line; ///< the command line that gave it; empty when none did
    };

    /// The current value of an option; std::monostate while it has none.
    using Value = std::variant<std::monostate, bool, std::int32_t, float, std::string>;

    /// A registered option.
    struct Option {
        std::string name;       ///< as it was registered; may be empty
        OptionType type;        ///< the type of its values
        std::string help;       ///< what it does, for people; may be empty, may hold line breaks
        std::string group;      ///< the help group that was current when the option was registered
        Value value;            ///< the current value, of the option's type; none until the first assignment
        std::int32_t level = 0; ///< where the value came from, as the caller of `parse_option` counts; 0 without value

        /// Whether the option has a value.
        bool has_value() const noexcept { return !std::holds_alternative<std::monostate>(value); }
    };

    /// An empty store that takes the texts of `bool_style` for booleans.
    explicit OptionParser(OptionBoolStyle bool_style);

    OptionParser(const OptionParser &) = delete;
    OptionParser &operator=(const OptionParser &) = delete;
    ~OptionParser();

    /// Makes `group` (any bytes, may be empty; copied) the help group of the options registered from now on.
    void set_cur_help_group(const std::string &group);

    /// The help group of the options registered from now on; empty at first. Owned by the parser.
    const std::string &cur_help_group() const noexcept { return help_group; }

    /// Registers option `name` (any bytes, may be empty, may hold NUL) in the current help group, without a value, with
    /// its `type` and `help` (any bytes, may be empty; shown by `print_help`).
    /// Throws `error`: "option registered twice " + name when the name is taken, and the first stands;
    /// "unknown type of option " + name when `type` is none of the enumerators, with the code as the value's text. After
    /// a throw the store is what it was.
    void add_option(std::string name, OptionType type, std::string help);

    /// Gives option `name` the value that the text `value` says in its type's syntax, and keeps `level` (any int32)
    /// with it. Both texts are any bytes, may be empty and may hold NUL; docs/format.md lists the syntax, and nothing
    /// is stripped here. The later of two calls wins, whatever their levels. Throws `error`: "unknown option " + name,
    /// followed by " (did you mean NEARBY?)" when a registered name is nearby; "invalid value for option " + name when
    /// the text is not of the type. Both carry the name and the text. After a throw the earlier value and level stand.
    void parse_option(const std::string &name, const std::string &value, std::int32_t level);

    /// The value that the text `value` (any bytes) says in the syntax of `type`, a boolean in that of `bool_style`;
    /// std::monostate where it is not of the type.
    static Value parse_value(std::string_view value, OptionType type, OptionBoolStyle bool_style);

    /// Returns true and writes the value of option `name` (any bytes) to `*out` (not null) when the option is
    /// registered, is a boolean and has a value; otherwise returns false and leaves `*out` alone. Does not throw.
    bool get_bool_option(const std::string &name, bool *out) const;

    /// As `get_bool_option`, for a 32-bit signed integer: `name`, `*out`.
    bool get_int_option(const std::string &name, std::int32_t *out) const;

    /// As `get_bool_option`, for a 32-bit float: `name`, `*out`.
    bool get_float_option(const std::string &name, float *out) const;

    /// As `get_bool_option`, for a byte string: `name`, `*out`. Throws std::bad_alloc when memory runs out, and then
    /// leaves `*out` alone too.
    bool get_str_option(const std::string &name, std::string *out) const;

    /// The registered options in the order of their registration. Owned by the parser; their addresses are good until
    /// the parser ends.
    const std::deque<Option> &options() const noexcept { return registered; }

    /// The option `name` (any bytes), owned by the parser and good until it ends; null when there is none.
    const Option *find_option(const std::string &name) const;

    /// Lists the options on `out` by group, groups and options in the order of their registration: name, type and help,
    /// wrapped to 80 columns with its own line breaks kept. Failures are left in the stream's state.
    void print_help(std::ostream &out) const;

private:
    OptionBoolStyle style;
    std::string help_group;
    std::deque<Option> registered;                          // addresses must stay: by_name points here
    std::unordered_map<std::string_view, Option *> by_name; // keys are views of Option::name
};

} // namespace dalvo
