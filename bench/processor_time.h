// What a call costs on a machine with other work: programs that run one after the other cannot
// alternate call by call, and the clock counts what the others take.
#pragma once

namespace bench {

// Processor seconds of one call, by a clock of them that may be coarse.
template <class ProcessorTime, class Work>
double processor_seconds(ProcessorTime&& now, Work&& work) {
    constexpr int calls_at_a_time = 16;
    constexpr double least_seconds = 0.5;
    work();
    const double start = now();
    double used = 0;
    int calls = 0;
    while (used < least_seconds) {
        for (int i = 0; i < calls_at_a_time; ++i)
            work();
        calls += calls_at_a_time;
        used = now() - start;
    }
    return used / calls;
}

}  // namespace bench
