#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "dalvo/export.h"
#include "dalvo/inspect/knowledge/catalogue.h"
#include "dalvo/inspect/runs/file.h"

namespace dalvo::inspect {

class Text;

/// The texts that a program takes, in their order, the section that it chooses, and assignments that win over all.
///
/// First apply the assignments of the unnamed section, text by text; then those of the chosen section, text by text;
/// then those of `assign`. Where two assign to one option, the later one wins. That is the order in which
/// ConfigurationSetter replays texts that it has loaded; here each filling starts anew, and leaves nothing behind for
/// the next one.
///
/// Example:
///
///     Run run;
///     run.add_default();
///     run.add_file("solver.cfg");
///     run.choose_section("fast");
///     run.assign("random_seed", "7");
///     const Resolution resolution(run);
///
/// Texts and names are any bytes. Each operation throws std::bad_alloc when memory runs out, and is then as if it had
/// not been called. Nothing else is thrown: what is wrong with a text is found when the run is checked or resolved.
/// Runs may be copied; copies share the texts.
class DALVO_API Run {
public:
    /// A run of no texts. `catalogue` is borrowed for as long as the run, and what is made of it, is used.
    explicit Run(const Catalogue &catalogue = Catalogue::standard());

    /// Adds the default text of the catalogue, as "built-in default".
    void add_default();

    /// Adds a text with the bytes `contents`, which people know as `source`.
    void add_text(const std::string &source, std::string contents);

    /// Adds `contents`, or the error that it holds instead, as `source`.
    void add_contents(const std::string &source, Contents contents);

    /// Adds the text in the file `path`, which is its source. A file that cannot be read whole is part of the run as an
    /// error.
    void add_file(const std::string &path);

    /// Adds the text that `in` has up to its end (borrowed for the call), as `source`; a stream that fails as an error.
    void add_stream(const std::string &source, std::istream &in);

    /// Makes `name` the chosen section, "" for none.
    void choose_section(const std::string &name);

    /// Assigns `value` to the option `name` after all texts, whatever the section; `source` is what people know the
    /// place of the assignment as.
    void assign(const std::string &name, const std::string &value, const std::string &source = "command line");

    /// The chosen section; "" for none.
    const std::string &section() const noexcept { return chosen; }

    /// Whether one of the texts has the section `name`; true for "".
    bool has_section(const std::string &name) const;

    /// A section of the texts.
    struct Section {
        std::string name;        ///< "" for the unnamed one
        std::size_t assignments; ///< in all texts; a line counts as often as it is filed
    };

    /// The sections of the texts, each once: the unnamed one, then the others in the order of their first headers.
    std::vector<Section> sections() const;

    /// The options that the texts may assign to.
    const Catalogue &catalogue() const noexcept { return *known; }

    /// An input that could not be read.
    struct Unreadable {
        std::string source; ///< what people know it as
        std::string error;  ///< why: "No such file or directory", ...
        std::size_t text;   ///< the number of texts before it
    };

    /// The inputs that could not be read, in their order.
    const std::vector<Unreadable> &unreadable() const noexcept { return failures; }

    /// The texts, for the library's own use.
    const std::vector<std::shared_ptr<const Text>> &texts() const noexcept { return list; }

    /// The assignments of `assign` as texts, one for each that come one after the other from one source; for the
    /// library's own use.
    std::vector<std::shared_ptr<const Text>> direct_texts() const;

private:
    struct Direct {
        std::string source;
        std::vector<std::pair<std::string, std::string>> pairs;
    };

    const Catalogue *known;
    std::vector<std::shared_ptr<const Text>> list;
    std::vector<Unreadable> failures;
    std::vector<Direct> direct;
    std::string chosen;
};

} // namespace dalvo::inspect
