// Speed and memory of the component and the console program, against the platform's interfaces
// called directly. Writes one JSON object a line to standard output; bench.sh makes the table.
//     component_bench [NAME …]    those whose names begin so; all without a name
//     component_bench --list      their names and what they measure
//     component_bench --profile   where the time of a row goes

#include <cstdio>
#include <cwchar>
#include <exception>
#include <span>
#include <string_view>

#include "automation/error.h"
#include "bench/component/measure.h"
#include "bench/component/program_bench.h"
#include "text/utf8.h"

namespace {

void print(const bench::Benchmark& benchmark, const bench::Figures& figures) {
    std::printf(
        "{\"name\": \"%s\", \"work\": \"%s\", \"against\": \"%s\", \"component\": %.4f, "
        "\"baseline\": %.4f, \"unit\": \"%s\", \"value\": %.4f, \"goal\": %g}\n",
        benchmark.name.c_str(), benchmark.work.c_str(), benchmark.baseline.c_str(),
        figures.component, figures.baseline, figures.unit.c_str(), figures.value(), benchmark.goal);
    std::fflush(stdout);
}

bool is_wanted(std::string_view name, std::span<wchar_t*> prefixes) {
    if (prefixes.empty()) return true;
    for (const wchar_t* const prefix : prefixes) {
        const std::wstring_view wanted(prefix);
        if (name.starts_with(std::string(wanted.begin(), wanted.end()))) return true;
    }
    return false;
}

bench::Benchmarks all_benchmarks() {
    bench::Benchmarks all;
    for (const auto group :
         {bench::content_benchmarks, bench::script_benchmarks, bench::query_benchmarks,
          bench::automation_benchmarks, bench::program_benchmarks})
        for (const bench::Benchmark& benchmark : group())
            all.push_back(benchmark);
    return all;
}

void run(std::span<wchar_t*> arguments) {
    const bool lists = arguments.size() == 1 && std::wcscmp(arguments[0], L"--list") == 0;
    for (const bench::Benchmark& benchmark : all_benchmarks()) {
        if (lists)
            std::printf("%-18s %s\n", benchmark.name.c_str(), benchmark.work.c_str());
        else if (is_wanted(benchmark.name, arguments))
            print(benchmark, benchmark.run());
    }
}

}  // namespace

extern "C" int wmain(int count, wchar_t** arguments) {
    automation::check(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    int code = 1;
    try {
        const std::span<wchar_t*> given(arguments + 1, static_cast<std::size_t>(count - 1));
        if (given.size() == 3 && std::wcscmp(given[0], L"--execute-and-save") == 0) {
            code = bench::execute_and_save(given[1], given[2]);
        } else {
            if (given.size() == 1 && std::wcscmp(given[0], L"--profile") == 0)
                bench::print_profile();
            else
                run(given);
            code = 0;
        }
    } catch (const automation::Error& error) {
        std::fprintf(stderr, "component_bench: %08lx %s\n",
                     static_cast<unsigned long>(error.code()),
                     tessera::to_utf8(error.description().u16()).c_str());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "component_bench: %s\n", error.what());
    }
    CoUninitialize();
    return code;
}
