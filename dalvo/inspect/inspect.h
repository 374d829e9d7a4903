#pragma once

/// What is known about options and texts, for hosts that want to tell their users what is wrong, and where a setting
/// comes from. The library is dalvo::inspect, libdalvo-inspect; who only loads and fills does without it.
///
///     dalvo::inspect::Run run;                                   // the texts that a program takes, in their order
///     run.add_default();                                         // the built-in text
///     run.add_file("solver.cfg");
///     run.choose_section("fast");
///
///     dalvo::Configuration settings;
///     const auto findings = dalvo::inspect::fill(run, &settings);
///     dalvo::inspect::print(std::cerr, findings);                // "solver.cfg:2:13: error: value 3 is ..."
///     if (dalvo::inspect::has_errors(findings)) { ... }
///
/// knowledge/   options: names, types, values, relations, those of a host; suggestions
/// runs/        runs of texts; what they come to, option by option
/// findings/    what is wrong with a run or a text, how to mend it, and how to print it
/// words/       values in words
#include "dalvo/inspect/findings/check.h"
#include "dalvo/inspect/findings/finding.h"
#include "dalvo/inspect/findings/print.h"
#include "dalvo/inspect/findings/rules.h"
#include "dalvo/inspect/knowledge/catalogue.h"
#include "dalvo/inspect/knowledge/optioninfo.h"
#include "dalvo/inspect/runs/explanation.h"
#include "dalvo/inspect/runs/file.h"
#include "dalvo/inspect/runs/place.h"
#include "dalvo/inspect/runs/resolution.h"
#include "dalvo/inspect/runs/run.h"
#include "dalvo/inspect/runs/settingstext.h"
#include "dalvo/inspect/words/words.h"
