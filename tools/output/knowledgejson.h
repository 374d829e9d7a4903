#pragma once

#include <nlohmann/json.hpp>

#include "dalvo/inspect/knowledge/optioninfo.h"
#include "dalvo/inspect/runs/resolution.h"

// What several commands write of options and settings as JSON; docs/json.md describes it.

namespace dalvo::tools {

/// A setting: "inf", "-inf" and "nan" as texts; null for none.
nlohmann::ordered_json json_value(const inspect::Value &value);

/// A line; null on a command line, which has none.
nlohmann::ordered_json json_line(const inspect::Place &place);

/// The codes, each with its meaning.
nlohmann::ordered_json json_codes(const inspect::OptionInfo &option);

/// What the option has to do with others: matters_when, forces, needs.
nlohmann::ordered_json json_relations(const inspect::OptionInfo &option);

} // namespace dalvo::tools
