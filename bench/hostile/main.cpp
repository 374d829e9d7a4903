// Loads texts that are made to cost as much as they can, and measures what they cost.
//   hostile --list     names the cases
//   hostile CASE       measures one case: the name, its bytes, seconds, the peak of memory, that for each byte
//   hostile --smoke    runs all cases at a thousandth of their sizes: shows that all come to what they should
// The peak is the resident memory of the process at its highest (getrusage), less what it was before the text. It never
// falls again, so that each case needs a process of its own: scripts/hostile. Seconds are the processor's, from before
// the text is loaded until the setter has ended, without the check of the outcome; making the text is part of them.

#include <sys/resource.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <iostream>
#include <istream>
#include <memory>
#include <stdexcept>
#include <string>

#include "bench/hostile/cases.h"
#include "dalvo/configuration/configurationsetter.h"

namespace {

using namespace dalvo;
using namespace dalvo::hostile;

std::uint64_t peak_bytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::uint64_t>(usage.ru_maxrss) * 1024;
}

/// Of the processor: other programs on the machine do not count.
double seconds_so_far()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// The text of the error that loading, and applying where that is asked for, ends in; empty for none.
std::string error_of(ConfigurationSetter &setter, std::istream &in, bool is_applied)
{
    constexpr std::size_t enough = 100;
    try {
        setter.load(in, 0);
        if (is_applied) {
            Configuration record;
            setter.update_config(&record);
        }
    } catch (const OptionParser::error &e) {
        const char *const text = e.what();
        return {text, strnlen(text, enough)};
    }
    return "";
}

/// Throws std::runtime_error unless the text came to what it should.
void require(const Case &measured, const ConfigurationSetter &setter, const std::string &error)
{
    const Outcome &expected = measured.outcome;
    std::uint64_t entries = 0;
    for (const auto &section : setter.sections()) {
        entries += section.second.size();
    }
    const std::uint64_t sections = setter.sections().size();
    const bool is_expected_error = error.empty() == expected.error.empty() && error.rfind(expected.error, 0) == 0;
    if (sections != expected.sections || entries != expected.entries || !is_expected_error) {
        throw std::runtime_error(measured.name + ": " + std::to_string(sections) + " sections, " +
                                 std::to_string(entries) + " assignments, error '" + error + "'");
    }
}

/// Loads the text, ends the setter, and writes the row.
void run(const Case &measured)
{
    auto setter = std::make_unique<ConfigurationSetter>();
    setter->initialize_options();
    GeneratedBuffer buffer(measured.text);
    std::istream in(&buffer);
    const std::uint64_t peak_before = peak_bytes();
    const double start = seconds_so_far();
    const std::string error = error_of(*setter, in, measured.outcome.is_applied);
    const double loaded = seconds_so_far();
    require(measured, *setter, error);
    const double checked = seconds_so_far();
    setter.reset();
    const double seconds = (loaded - start) + (seconds_so_far() - checked);
    const std::uint64_t peak = peak_bytes() - peak_before;
    const auto per_byte = static_cast<double>(peak) / static_cast<double>(buffer.bytes());
    std::printf("%-28s %13llu %10.3f %13llu", measured.name.c_str(), static_cast<unsigned long long>(buffer.bytes()),
                seconds, static_cast<unsigned long long>(peak));
    if (buffer.bytes() != 0) {
        std::printf(" %10.2f", per_byte);
    }
    std::printf("\n");
}

int usage()
{
    std::cerr << "usage: hostile --list | --smoke | CASE\n";
    return 2;
}

int run_chosen(const std::string &choice)
{
    constexpr std::uint64_t smoke_shrink = 1000;
    bool found = false;
    for (const Case &each : cases(choice == "--smoke" ? smoke_shrink : 1)) {
        if (choice == "--list") {
            std::printf("%s\n", each.name.c_str());
        } else if (choice == "--smoke" || choice == each.name) {
            run(each);
        } else {
            continue;
        }
        found = true;
    }
    return found ? 0 : usage();
}

} // namespace

int main(int argc, char **argv)
{
    try {
        return argc == 2 ? run_chosen(argv[1]) : usage();
    } catch (const std::exception &e) {
        std::cerr << "hostile: " << e.what() << '\n';
        return 1;
    }
}
