#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "bench/heap_count.h"

/// Contenders that do the same work, measured side by side.
///
/// A case is measured in rounds; in each round every contender runs, in an order drawn anew, so that the machine's
/// noise hits all alike. A figure is the median over the rounds, a ratio the median of the rounds' ratios.
namespace dalvo::bench {

/// Runs `work` and returns its time in nanoseconds, without the time in which other programs had the processor. The one
/// place where the clock runs, and the function whose instructions scripts/bench counts.
double timed(const std::function<void()> &work);

/// Takes the times of a contender's runs, a sum for each phase.
class Laps {
public:
    enum class Clock { running, stopped };

    explicit Laps(Clock laps_clock = Clock::running) : clock(laps_clock) {}

    void time(const std::string &phase, const std::function<void()> &work)
    {
        if (clock == Clock::running) {
            spent[phase] += timed(work);
        } else {
            work();
        }
    }

    std::map<std::string, double> spent;

private:
    Clock clock;
};

/// One way to do a case's work.
struct Contender {
    std::string name;

    /// Does the work once: what goes through the laps is measured, the rest is not. When `verify` is true it also looks
    /// at the result, outside of the laps, and throws std::runtime_error when that is wrong.
    std::function<void(Laps &laps, bool verify)> run;
};

/// Throws std::runtime_error with `what` unless `holds`.
void require(bool holds, const std::string &what);

constexpr const char *only_phase = "time";

/// A contender that makes a result, which is destroyed outside of the clock.
template <class Make, class Verify> Contender making(const std::string &name, Make make, Verify verify_result)
{
    return {name, [make, verify_result](Laps &laps, bool verify) {
                decltype(make()) result{};
                laps.time(only_phase, [&] { result = make(); });
                if (verify) {
                    verify_result(result);
                }
            }};
}

/// The most that our time may be of another contender's, in one phase.
struct RatioBound {
    std::string contender; ///< ours
    std::string against;
    std::string phase;
    double at_most;
    double allowance = 0; ///< nanoseconds that our run may take beside that, for what the other does not do
};

/// The most allocations that a contender may make for each unit.
struct AllocationBound {
    std::string contender;
    double at_most;
};

struct Case {
    std::string workload;
    std::string name;  ///< within its workload
    std::string unit;  ///< what the figures are given for: "line", "option", "name"
    double units = 1;  ///< how many of them one run handles
    double stored = 0; ///< assignments that the result holds, for the peak of the memory; 0: not of interest
    std::vector<std::string> phases = {only_phase};
    std::vector<Contender> contenders;
    std::vector<RatioBound> ratio_bounds;
    std::vector<AllocationBound> allocation_bounds;
    std::vector<std::string> notes; ///< what a reader of the table must know: a contender that is left out, and why

    std::string title() const { return workload + ", " + name; }
};

/// How long to measure.
struct Effort {
    std::size_t least_rounds = 5;
    std::size_t most_rounds = 41;
    double case_seconds = 6;       ///< rounds end when this is spent, but for the least
    double sample_seconds = 0.004; ///< a contender's share of a round is repeated until it lasts so long
};

struct Measured {
    std::string contender;
    HeapUse heap;                                     ///< of one run, all its phases and its preparation
    std::map<std::string, std::vector<double>> times; ///< by phase: nanoseconds of one run, one figure a round
};

struct CaseResult {
    const Case *measured_case;
    std::vector<Measured> contenders;

    const Measured &of(const std::string &contender) const;
    double median_time(const std::string &contender, const std::string &phase) const;
    double median_ratio(const std::string &contender, const std::string &against, const std::string &phase) const;
    /// The ratio that a bound allows, its allowance included.
    double limit(const RatioBound &bound) const;
};

/// Checks each contender's result once, counts its allocations once, then measures. `seed` decides the orders.
/// Throws std::runtime_error, with the case and the contender, when a result is wrong.
CaseResult measure(const Case &work, const Effort &effort, std::uint64_t seed);

double median(std::vector<double> figures);

} // namespace dalvo::bench
