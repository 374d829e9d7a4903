#include <iostream>

#include "bench/workloads.h"

// Runs one contender of one case for valgrind --tool=callgrind to count the instructions of a run; see scripts/bench.
// Without arguments it lists the smallest cases and their contenders.

namespace {

using namespace dalvo::bench;

int list(const std::vector<Case> &cases)
{
    for (const Case &work : cases) {
        for (const Contender &contender : work.contenders) {
            std::cout << work.title() << '\t' << contender.name << '\n';
        }
    }
    return 0;
}

int run_once(const std::vector<Case> &cases, const std::string &title, const std::string &name)
{
    for (const Case &work : cases) {
        for (const Contender &contender : work.contenders) {
            if (work.title() == title && contender.name == name) {
                Laps warming_up(Laps::Clock::stopped);
                contender.run(warming_up, false);
                Laps counted;
                contender.run(counted, false);
                return 0;
            }
        }
    }
    std::cerr << "instructions: there is no case \"" << title << "\" with a contender \"" << name << "\"\n";
    return 1;
}

} // namespace

int main(int argc, char **argv)
{
    std::vector<Case> cases;
    for (const auto &make_case : all_cases(Scale::smoke)) {
        cases.push_back(make_case());
    }
    if (argc == 1) {
        return list(cases);
    }
    if (argc != 3) {
        std::cerr << "usage: instructions [TITLE CONTENDER]\n";
        return 2;
    }
    return run_once(cases, argv[1], argv[2]);
}
