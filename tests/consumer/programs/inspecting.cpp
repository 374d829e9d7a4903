// A host that inspects a text and takes the rest from dalvo::inspect. Its argument is the seed that the built-in default
// text sets.
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>

#include "dalvo/inspect/inspect.h"

int main(int argc, char **argv)
{
    using namespace dalvo::inspect;
    Catalogue options;
    options.describe("host.size", dalvo::OPT_INT, "Host options:", "A size.", {"5", dalvo::at_least(1), {}});
    Run run(options);
    run.add_default();
    run.add_text("host.cfg", "verbosity = 3\nhost.size = 0\n[fast]\nverbosity = 1\n");
    run.choose_section("fast");
    std::ostringstream printed;
    dalvo::Configuration record;
    print(printed, fill(run, &record));
    const std::string expected = "host.cfg:1:13: warning: value 3 is out of range: verbosity accepts at most 2; replaced by "
                                 "line 4 [out-of-range-replaced]\n    verbosity = 3\n                ^\n"
                                 "host.cfg:2:13: error: value 0 is out of range: host.size accepts at least 1\n"
                                 "    host.size = 0\n                ^\n";
    const Resolution resolution(run);
    const bool is_right = printed.str() == expected && !resolution.applies() &&
                          value_text(resolution.find("random_seed")->value) == (argc > 1 ? argv[1] : "") &&
                          value_text(resolution.find("host.size")->value) == "5";
    std::cout << printed.str() << (is_right ? "" : "not what was expected\n");
    return is_right ? EXIT_SUCCESS : EXIT_FAILURE;
}
