#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <iostream>

#include "bench/heap_count.h"
#include "bench/report.h"
#include "bench/workloads.h"

// The benchmark: measures every case, prints one table, writes JSON. scripts/bench runs it.

namespace {

using namespace dalvo::bench;

Effort effort_for(Scale scale)
{
    switch (scale) {
    case Scale::smoke: return {1, 2, 0, 0};
    case Scale::quick: return {3, 41, 0.7, 0.002};
    case Scale::full: break;
    }
    return Effort();
}

struct Request {
    Scale scale = Scale::full;
    std::string only;
    std::string json_file;
    Instructions instructions;
};

/// Measures a case, prints its table and returns its figures as JSON text; an empty one when it is not asked for.
std::string measure_and_print(const Request &request, const std::function<Case()> &make_case)
{
    constexpr std::uint64_t seed = 4;
    const Case work = make_case();
    if (work.title().compare(0, request.only.size(), request.only) != 0) {
        return "";
    }
    const CaseResult result = measure(work, effort_for(request.scale), seed);
    print_table(std::cout, result, request.instructions);
    std::cout.flush();
    return as_json(result, request.instructions).dump();
}

[[noreturn]] void run_child(const Request &request, const std::function<Case()> &make_case, int to_parent)
{
    int status = 1;
    try {
        const std::string figures = measure_and_print(request, make_case);
        std::size_t sent = 0;
        while (sent < figures.size()) {
            const ssize_t step = ::write(to_parent, figures.data() + sent, figures.size() - sent);
            require(step > 0, "cannot hand the figures over");
            sent += static_cast<std::size_t>(step);
        }
        status = 0;
    } catch (const std::exception &e) {
        std::cerr << "benchmark: " << e.what() << '\n';
    }
    ::_exit(status);
}

/// The same in a process of its own.
std::string measure_apart(const Request &request, const std::function<Case()> &make_case)
{
    int ends[2];
    require(::pipe(ends) == 0, "no pipe");
    const pid_t child = ::fork();
    require(child >= 0, "no process");
    if (child == 0) {
        run_child(request, make_case, ends[1]);
    }
    ::close(ends[1]);
    std::string figures;
    char part[4096];
    for (ssize_t got = 0; (got = ::read(ends[0], part, sizeof part)) > 0;) {
        figures.append(part, static_cast<std::size_t>(got));
    }
    ::close(ends[0]);
    int status = 0;
    require(::waitpid(child, &status, 0) == child && status == 0, "a case failed");
    return figures;
}

void run(const Request &request)
{
    nlohmann::json cases = nlohmann::json::array();
    int met = 0;
    int missed = 0;
    for (const auto &make_case : all_cases(request.scale)) {
        const std::string figures = measure_apart(request, make_case);
        if (figures.empty()) {
            continue;
        }
        cases.push_back(nlohmann::json::parse(figures));
        for (const auto &bound : cases.back()["bounds"]) {
            ++(bound["met"].get<bool>() ? met : missed);
        }
    }
    std::cout << '\n' << met << " bounds met, " << missed << " missed\n";
    if (!request.json_file.empty()) {
        std::ofstream out(request.json_file);
        out << nlohmann::json{{"cases", cases}}.dump(2) << '\n';
        require(static_cast<bool>(out.flush()), "cannot write " + request.json_file);
    }
}

} // namespace

int main(int argc, char **argv)
{
    CLI::App app("Measures dalvo beside its peers.");
    Request request;
    std::string instructions_file;
    app.add_flag_callback(
        "--quick", [&] { request.scale = Scale::quick; }, "Leave out the sizes that take long.");
    app.add_flag_callback(
        "--smoke", [&] { request.scale = Scale::smoke; }, "The smallest sizes, once or twice.");
    app.add_option("--only", request.only, "Only cases whose title begins so, such as \"load, 1000 \".");
    app.add_option("--json", request.json_file, "Write all figures to this file.");
    app.add_option("--instructions", instructions_file, "A table of counted instructions, to be shown along.");
    CLI11_PARSE(app, argc, argv);
    try {
        if (!instructions_file.empty()) {
            request.instructions = read_instructions(instructions_file);
        }
        keep_freed_memory();
        run(request);
        return 0;
    } catch (const std::exception &e) {
        std::cerr << "benchmark: " << e.what() << '\n';
        return 1;
    }
}
