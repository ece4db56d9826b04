// Medians of alternating repetitions: on a machine with other work, two runs one after the other
// differ by more than what is measured.
#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace bench {

template <class Work>
double seconds(Work&& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

// What one benchmark found: the component's figure and the baseline's, in the same unit, and how
// they are held against each other.
struct Figures {
    double component = 0;
    double baseline = 0;
    std::string unit = "us";
    bool as_difference = false;
    double ratio_of_pairs = 0;  // where repetitions were paired

    double value() const {
        if (as_difference) return component - baseline;
        if (ratio_of_pairs > 0) return ratio_of_pairs;
        return baseline > 0 ? component / baseline : 0;
    }
};

// Both answer the seconds that they took, so that what prepares them does not count; `times` is how
// often the work was done in them. A machine is slower in one second than in the next, and who
// comes second finds the memory as the first left it: neighbours are held against each other, and
// take turns in coming first.
template <class Component, class Baseline>
Figures compare(int rounds, int times, Component&& component, Baseline&& baseline) {
    std::vector<double> own;
    std::vector<double> other;
    std::vector<double> ratios;
    component();
    baseline();
    for (int round = 0; round < rounds; ++round) {
        if (round % 2 == 0) own.push_back(component());
        other.push_back(baseline());
        if (round % 2 != 0) own.push_back(component());
        ratios.push_back(own.back() / other.back());
    }
    const double to_microseconds = 1e6 / times;
    Figures figures{median(own) * to_microseconds, median(other) * to_microseconds};
    figures.ratio_of_pairs = median(ratios);
    return figures;
}

struct Benchmark {
    std::string name;
    std::string work;
    std::string baseline;
    double goal;  // what the figures' value is to be at most
    std::function<Figures()> run;
};

using Benchmarks = std::vector<Benchmark>;

Benchmarks content_benchmarks();
Benchmarks script_benchmarks();
Benchmarks query_benchmarks();
Benchmarks automation_benchmarks();
Benchmarks program_benchmarks();

// Where the time of a mapping script's row goes.
void print_profile();

}  // namespace bench
