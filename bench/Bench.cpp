#include "Bench.h"

#include "wintypes.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <utility>

namespace bench
{
namespace
{

double Median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

bool Met(const Measure& measure)
{
    return !measure.goal || measure.ratio.value_or(measure.value) <= *measure.goal;
}

std::string Number(const std::optional<double>& value, int decimals, const char* missing)
{
    if (!value)
        return missing;
    char text[64];
    std::snprintf(text, sizeof(text), "%.*f", decimals, *value);
    return text;
}

// Names and units are our own and need no escapes.
void PrintJson(const Measure& measure)
{
    std::printf("{\"name\": \"%s\", \"value\": %.4f, \"unit\": \"%s\", \"reference\": \"%s\", \"ratio\": %s, "
                "\"goal\": %s, \"met\": %s}\n",
                measure.name.c_str(), measure.value, measure.unit.c_str(), measure.reference.c_str(),
                Number(measure.ratio, 4, "null").c_str(), Number(measure.goal, 2, "null").c_str(),
                measure.goal ? (Met(measure) ? "true" : "false") : "null");
}

void PrintRow(const Measure& measure)
{
    std::printf("%-34s %10.3f %-8s  %-31s %7s  %5s  %s\n", measure.name.c_str(), measure.value,
                measure.unit.c_str(), measure.reference.c_str(), Number(measure.ratio, 3, "").c_str(),
                Number(measure.goal, 2, "").c_str(), measure.goal ? (Met(measure) ? "met" : "MISSED") : "");
}

// Microseconds since a moment that stays the same.
double Now(Clock clock)
{
    if (clock == Clock::Wall)
    {
        const auto time = std::chrono::steady_clock::now().time_since_epoch();
        return std::chrono::duration<double, std::micro>(time).count();
    }
#ifndef _WIN32
    return 1e6 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
#else
    constexpr double kUnit = 0.1; // of FILETIME
    FILETIME start, exit, kernel, user;
    ::GetProcessTimes(::GetCurrentProcess(), &start, &exit, &kernel, &user);
    const auto microseconds = [](const FILETIME& time) {
        return kUnit * (4294967296.0 * time.dwHighDateTime + time.dwLowDateTime);
    };
    return microseconds(kernel) + microseconds(user);
#endif
}

} // namespace

double Microseconds(const Variant& variant, Clock clock)
{
    if (variant.prepare)
        variant.prepare();
    const double begin = Now(clock);
    variant.run();
    return (Now(clock) - begin) / variant.units;
}

Comparison::Comparison(std::vector<Variant> variants, unsigned rounds, Clock clock) : m_times(variants.size())
{
    for (const Variant& variant : variants)
        Microseconds(variant, clock);

    const std::size_t count = variants.size();
    for (unsigned round = 0; round < rounds; ++round)
    {
        const bool backward = round / count % 2 != 0;
        for (std::size_t i = 0; i < count; ++i)
        {
            const std::size_t turn = (i + round) % count;
            const std::size_t variant = backward ? count - 1 - turn : turn;
            m_times[variant].push_back(Microseconds(variants[variant], clock));
        }
    }
}

double Comparison::Time(std::size_t variant) const
{
    return Median(m_times.at(variant));
}

double Comparison::Ratio(std::size_t variant, std::size_t reference) const
{
    std::vector<double> ratios = m_times.at(variant);
    std::transform(ratios.begin(), ratios.end(), m_times.at(reference).begin(), ratios.begin(),
                   [](double time, double other) { return time / other; });
    return Median(std::move(ratios));
}

Options ParseOptions(int count, const char* const* arguments)
{
    Options options;
    for (int i = 1; i < count; ++i)
    {
        if (std::strcmp(arguments[i], "--json") == 0)
            options.json = true;
        else if (std::strcmp(arguments[i], "--quick") == 0)
            options.quick = true;
        else
        {
            std::fprintf(stderr, "usage: %s [--json] [--quick]\n", arguments[0]);
            std::exit(2);
        }
    }
    return options;
}

void Report::Print(const Options& options) const
{
    if (!options.json)
        std::printf("%-34s %10s %-8s  %-31s %7s  %5s\n", "measure", "value", "unit", "reference", "ratio",
                    "goal");
    for (const Measure& measure : m_measures)
        options.json ? PrintJson(measure) : PrintRow(measure);
}

bool Report::AllMet() const
{
    return std::all_of(m_measures.begin(), m_measures.end(), Met);
}

} // namespace bench
