#include "bench/harness.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <numeric>
#include <random>
#include <stdexcept>

namespace dalvo::bench {

namespace {

using Clock = std::chrono::steady_clock;

/// The time that this thread has had on a processor, in nanoseconds.
double thread_time()
{
    std::timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return 1e9 * static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec);
}

double seconds_since(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// Runs a contender once with its result looked at and once with the heap watched; returns the time of a run, which
/// tells how often to repeat it.
double try_out(const Contender &contender, Measured &measured)
{
    Laps unused(Laps::Clock::stopped);
    contender.run(unused, true);
    start_watching();
    contender.run(unused, false);
    measured.heap = stop_watching();
    Laps laps;
    const Clock::time_point start = Clock::now();
    contender.run(laps, false);
    return seconds_since(start);
}

void run_round(const Case &work, const std::vector<std::size_t> &repeats, std::mt19937_64 &random, CaseResult &result)
{
    std::vector<std::size_t> order(work.contenders.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::shuffle(order.begin(), order.end(), random);
    for (const std::size_t i : order) {
        Laps laps;
        for (std::size_t run = 0; run < repeats[i]; ++run) {
            work.contenders[i].run(laps, false);
        }
        for (const auto &[phase, spent] : laps.spent) {
            result.contenders[i].times[phase].push_back(spent / static_cast<double>(repeats[i]));
        }
    }
}

} // namespace

__attribute__((noinline)) double timed(const std::function<void()> &work)
{
    const double thread_start = thread_time();
    const Clock::time_point start = Clock::now();
    work();
    const double elapsed = std::chrono::duration<double, std::nano>(Clock::now() - start).count();
    return std::min(elapsed, thread_time() - thread_start); // the latter is slow to ask for, but does not count waiting
}

void require(bool holds, const std::string &what)
{
    if (!holds) {
        throw std::runtime_error(what);
    }
}

double median(std::vector<double> figures)
{
    require(!figures.empty(), "no figures to take the median of");
    std::sort(figures.begin(), figures.end());
    const std::size_t middle = figures.size() / 2;
    return figures.size() % 2 != 0 ? figures[middle] : (figures[middle - 1] + figures[middle]) / 2;
}

const Measured &CaseResult::of(const std::string &contender) const
{
    for (const Measured &measured : contenders) {
        if (measured.contender == contender) {
            return measured;
        }
    }
    throw std::out_of_range(measured_case->title() + " has no contender " + contender);
}

double CaseResult::median_time(const std::string &contender, const std::string &phase) const
{
    return median(of(contender).times.at(phase));
}

double CaseResult::median_ratio(const std::string &contender, const std::string &against,
                                const std::string &phase) const
{
    const std::vector<double> &ours = of(contender).times.at(phase);
    const std::vector<double> &theirs = of(against).times.at(phase);
    std::vector<double> ratios;
    for (std::size_t round = 0; round < ours.size(); ++round) {
        ratios.push_back(ours[round] / theirs[round]);
    }
    return median(ratios);
}

double CaseResult::limit(const RatioBound &bound) const
{
    return bound.at_most + bound.allowance / median_time(bound.against, bound.phase);
}

CaseResult measure(const Case &work, const Effort &effort, std::uint64_t seed)
{
    CaseResult result{&work, {}};
    std::vector<std::size_t> repeats;
    for (const Contender &contender : work.contenders) {
        result.contenders.push_back({contender.name, {}, {}});
        try {
            const double once = try_out(contender, result.contenders.back());
            repeats.push_back(std::max<std::size_t>(1, static_cast<std::size_t>(effort.sample_seconds / once)));
        } catch (const std::exception &e) {
            throw std::runtime_error(work.title() + ", " + contender.name + ": " + e.what());
        }
    }
    std::mt19937_64 random(seed);
    const Clock::time_point start = Clock::now();
    for (std::size_t round = 0; round < effort.most_rounds; ++round) {
        if (round >= effort.least_rounds && seconds_since(start) >= effort.case_seconds) {
            break;
        }
        run_round(work, repeats, random, result);
    }
    return result;
}

} // namespace dalvo::bench
