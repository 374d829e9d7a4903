#pragma once

#include "dalvo/export.h"

/// The built-in default configuration text: NUL-terminated pieces that are joined with nothing between them, then a
/// null pointer. Defined by dalvo::defaults, or by the host.
///
/// Include this where you define it: by this declaration a host that is built with hidden symbols shows it to
/// libdalvo.so. A piece may be empty, and brings its own line ends. Read at each `load_default`, never written.
///
/// Example, a host's own:
///
///     const char *dalvo_default_config[] = {"random_seed = 42\n", "verbosity = 1\n", nullptr};
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): hosts define it in just this way
extern "C" DALVO_API const char *dalvo_default_config[];
