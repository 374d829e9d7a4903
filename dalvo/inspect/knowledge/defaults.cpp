#include "dalvo/inspect/knowledge/defaults.h"

#include <algorithm>
#include <utility>

#include "dalvo/configuration/reader.h"
#include "dalvo/inspect/knowledge/relations.h"

namespace dalvo::inspect {

namespace {

/// Keeps the assignments of the unnamed section.
class UnnamedSection : public TextReceiver {
public:
    void header(const TextLine &, const std::vector<TextPiece> &names) override
    {
        applies = names.size() == 1 && names.front().text.empty();
    }
    void assignment(const TextLine &, const TextAssignment &assignment) override
    {
        if (applies) {
            assignments.emplace_back(assignment.name.text, assignment.value.text);
        }
    }
    void malformed(const TextLine &, const TextPiece &, const std::vector<TextPiece> &) override { applies = false; }

    std::vector<std::pair<std::string_view, std::string_view>> assignments; // views of the text

private:
    bool applies = true;
};

/// The text that gives each option its default.
std::map<std::string, std::string> default_texts(const Catalogue &catalogue)
{
    std::map<std::string, std::string> texts;
    for (std::size_t i = 0; i < catalogue.options().size(); ++i) {
        if (catalogue.has_described_default(i)) {
            texts[catalogue.options()[i].name] = value_text(catalogue.options()[i].initial_value);
        }
    }
    UnnamedSection unnamed;
    read_text(catalogue.default_text(), unnamed);
    for (const auto &[name, value] : unnamed.assignments) {
        const OptionInfo *const option = catalogue.find(name);
        if (option != nullptr && option->accepts(option->parse(value))) {
            texts[option->name] = value;
        }
    }
    return texts;
}

} // namespace

std::map<std::string, Value> values_by_option(const Configuration &record)
{
    const std::vector<AppliedOption> rows = applied_options();
    std::vector<Value> values = applied_values(record);
    std::map<std::string, Value> by_option;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        by_option[rows[row].name] = std::move(values[row]);
    }
    return by_option;
}

std::optional<double> lowest_sensible(const OptionInfo &option)
{
    if (option.codes.empty()) {
        return lowest_sensible_of(option.name); // none for a host's
    }
    const auto lowest = std::min_element(option.codes.begin(), option.codes.end(),
                                         [](const Code &a, const Code &b) { return a.value < b.value; });
    return lowest->value;
}

void update_defaults(const Catalogue &catalogue, std::deque<OptionInfo> &options)
{
    ConfigurationSetter setter;
    catalogue.register_options(setter);
    for (const auto &[name, text] : default_texts(catalogue)) {
        setter.set_option(name, text, 0);
    }
    Configuration record;
    setter.update_config(&record);
    const std::map<std::string, Value> values = values_by_option(record);
    for (OptionInfo &option : options) {
        const auto read = values.find(option.name);
        option.default_value = read != values.end() ? read->second : setter.options().find_option(option.name)->value;
    }
}

} // namespace dalvo::inspect
