#include "bench/report.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <ostream>
#include <sstream>
#include <stdexcept>

namespace dalvo::bench {

namespace {

constexpr std::size_t column_width = 12;

/// Three significant digits, as far as there are that many behind the point.
std::string figure(double value)
{
    char text[32];
    const int decimals = value >= 99.95 ? 0 : value >= 9.995 ? 1 : value >= 0.9995 ? 2 : 3;
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

std::string left(std::string text, std::size_t width)
{
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

std::string right(const std::string &text, std::size_t width = column_width)
{
    return std::string(text.size() < width ? width - text.size() : 1, ' ') + text;
}

bool has_phases(const Case &work)
{
    return work.phases.size() > 1;
}

double instructions_of(const Case &work, const std::string &contender, const Instructions &instructions)
{
    const auto found = instructions.find({work.title(), contender});
    return found != instructions.end() ? found->second / work.units : 0;
}

/// What the first contender's time is of another's, and the bound on it.
std::string ratio_cell(const CaseResult &result, const std::string &contender, const std::string &phase)
{
    const std::string &ours = result.measured_case->contenders.front().name;
    return contender == ours ? "" : figure(result.median_ratio(ours, contender, phase));
}

void print_rows(std::ostream &out, const CaseResult &result, const std::string &phase, bool is_first_phase,
                const Instructions &instructions)
{
    const Case &work = *result.measured_case;
    for (const Measured &measured : result.contenders) {
        const std::string row = measured.contender + (has_phases(work) ? ", " + phase : "");
        out << "  " << left(row, 34) << right(figure(result.median_time(measured.contender, phase) / work.units))
            << right(ratio_cell(result, measured.contender, phase));
        if (is_first_phase) {
            const double counted = instructions_of(work, measured.contender, instructions);
            out << right(figure(static_cast<double>(measured.heap.allocations) / work.units))
                << right(figure(static_cast<double>(measured.heap.bytes) / work.units))
                << right(work.stored > 0 ? figure(static_cast<double>(measured.heap.peak) / work.stored) : "")
                << right(counted > 0 ? figure(counted) : "");
        }
        out << '\n';
    }
}

void print_bound(std::ostream &out, const std::string &what, double reached, double at_most)
{
    const bool is_met = reached <= at_most;
    out << "  " << (is_met ? "met    " : "MISSED ") << left(what, 72) << right(figure(reached), 8) << "  (at most "
        << figure(at_most) << ")\n";
}

nlohmann::json bounds_of(const CaseResult &result)
{
    const Case &work = *result.measured_case;
    nlohmann::json list = nlohmann::json::array();
    for (const RatioBound &bound : work.ratio_bounds) {
        const double reached = result.median_ratio(bound.contender, bound.against, bound.phase);
        const double limit = result.limit(bound);
        list.push_back({{"contender", bound.contender},
                        {"against", bound.against},
                        {"phase", bound.phase},
                        {"ratio", reached},
                        {"at_most", limit},
                        {"met", reached <= limit}});
    }
    for (const AllocationBound &bound : work.allocation_bounds) {
        const double reached = static_cast<double>(result.of(bound.contender).heap.allocations) / work.units;
        list.push_back({{"contender", bound.contender},
                        {"allocations_per_unit", reached},
                        {"at_most", bound.at_most},
                        {"met", reached <= bound.at_most}});
    }
    return list;
}

nlohmann::json contenders_of(const CaseResult &result, const Instructions &instructions)
{
    const Case &work = *result.measured_case;
    nlohmann::json list = nlohmann::json::array();
    for (const Measured &measured : result.contenders) {
        nlohmann::json one{{"name", measured.contender},
                           {"allocations_per_unit", static_cast<double>(measured.heap.allocations) / work.units},
                           {"bytes_per_unit", static_cast<double>(measured.heap.bytes) / work.units},
                           {"peak_bytes", measured.heap.peak},
                           {"rounds_ns", measured.times}};
        for (const std::string &phase : work.phases) {
            one["ns_per_unit"][phase] = result.median_time(measured.contender, phase) / work.units;
        }
        const double counted = instructions_of(work, measured.contender, instructions);
        if (counted > 0) {
            one["instructions_per_unit"] = counted;
        }
        list.push_back(one);
    }
    return list;
}

} // namespace

Instructions read_instructions(const std::string &file)
{
    std::ifstream in(file);
    Instructions instructions;
    for (std::string line; std::getline(in, line);) {
        std::istringstream fields(line);
        std::string title;
        std::string contender;
        std::string count;
        std::getline(fields, title, '\t');
        std::getline(fields, contender, '\t');
        std::getline(fields, count, '\t');
        instructions[{title, contender}] = std::stod(count);
    }
    require(in.eof(), "cannot read " + file);
    return instructions;
}

void print_table(std::ostream &out, const CaseResult &result, const Instructions &instructions)
{
    const Case &work = *result.measured_case;
    out << '\n'
        << left(work.title(), 36) << right("ns/" + work.unit) << right("dalvo/it") << right("allocs/" + work.unit)
        << right("B/" + work.unit) << right(work.stored > 0 ? "peak B/asg" : "") << right("instr/" + work.unit) << '\n';
    for (const std::string &phase : work.phases) {
        print_rows(out, result, phase, phase == work.phases.front(), instructions);
    }
    for (const RatioBound &bound : work.ratio_bounds) {
        const std::string phase = has_phases(work) ? ", " + bound.phase : "";
        print_bound(out, bound.contender + " / " + bound.against + phase,
                    result.median_ratio(bound.contender, bound.against, bound.phase), result.limit(bound));
    }
    for (const AllocationBound &bound : work.allocation_bounds) {
        print_bound(out, bound.contender + ", allocations per " + work.unit,
                    static_cast<double>(result.of(bound.contender).heap.allocations) / work.units, bound.at_most);
    }
    for (const std::string &note : work.notes) {
        out << "  note   " << note << '\n';
    }
}

nlohmann::json as_json(const CaseResult &result, const Instructions &instructions)
{
    const Case &work = *result.measured_case;
    return {{"workload", work.workload},
            {"case", work.name},
            {"unit", work.unit},
            {"units", work.units},
            {"contenders", contenders_of(result, instructions)},
            {"bounds", bounds_of(result)},
            {"notes", work.notes}};
}

} // namespace dalvo::bench
