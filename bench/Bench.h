// What the benchmarks share: variants timed in turn, and a report of ratios against a reference.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace bench
{

// One of the ways to do the same thing. A call of `run` does `units` of it, lines for example; one of
// `prepare`, before each and not timed, makes that possible again.
struct Variant
{
    unsigned units;
    std::function<void()> run;
    std::function<void()> prepare = {};
};

// What is counted: the time that passes, or what this process had of the processor, its system calls
// included. The latter holds on a busy machine too, but not below tens of milliseconds, and without what the
// system's server does for a call.
enum class Clock
{
    Wall,
    Processor
};

// Microseconds a unit of one run.
double Microseconds(const Variant& variant, Clock clock = Clock::Wall);

// Times variants in rounds. Absolute times drift with the machine's load, so each round times every
// variant once, and ratios are taken within a round. The order changes from round to round: none of them
// always follows the same one.
class Comparison
{
public:
    // The first variant is the reference. Each is run once untimed, to open its files.
    Comparison(std::vector<Variant> variants, unsigned rounds, Clock clock = Clock::Wall);

    // Medians over the rounds: microseconds a unit, and the multiple of another variant's.
    double Time(std::size_t variant) const;
    double Ratio(std::size_t variant, std::size_t reference = 0) const;

private:
    std::vector<std::vector<double>> m_times; // by variant, then round
};

struct Options
{
    bool json = false;  // one object a line instead of the table
    bool quick = false; // few rounds: shows that everything runs; speed is not judged
};

// Takes "--json" and "--quick"; any other argument ends the process with 2.
Options ParseOptions(int count, const char* const* arguments);

// One line of the report. Without a goal it only informs.
struct Measure
{
    std::string name;
    double value = 0;
    std::string unit;
    std::string reference;
    std::optional<double> ratio = {}; // of the value to the reference's
    std::optional<double> goal = {};  // the most that the ratio may be, or the value where there is no ratio
};

class Report
{
public:
    void Add(const Measure& measure) { m_measures.push_back(measure); }

    // Prints all measures to the standard output.
    void Print(const Options& options) const;

    // True when no goal is missed.
    bool AllMet() const;

private:
    std::vector<Measure> m_measures;
};

} // namespace bench
