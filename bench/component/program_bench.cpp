// The console program as a whole process.

#include "bench/component/program_bench.h"

#include "automation/windows_headers.h"

#include <psapi.h>

#include <algorithm>
#include <stdexcept>

#include "automation/dom.h"
#include "automation/file_handle.h"
#include "automation/module.h"
#include "bench/component/measure.h"
#include "bench/component/project.h"

namespace bench {
namespace {

constexpr int rows = 20'000;
constexpr wchar_t save_command[] = L"--execute-and-save";

struct ProcessCost {
    double seconds = 0;
    double megabytes = 0;
};

// The most that a process held, seen in short intervals: not every system keeps the peak.
double watch_memory(HANDLE process) {
    SIZE_T most = 0;
    do {
        PROCESS_MEMORY_COUNTERS counters{};
        if (GetProcessMemoryInfo(process, &counters, sizeof counters))
            most = std::max(most, counters.PagefileUsage);
    } while (WaitForSingleObject(process, 10) == WAIT_TIMEOUT);
    return static_cast<double>(most) / (1 << 20);
}

ProcessCost run_process(std::wstring command) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    const automation::FileHandle nowhere(CreateFileW(L"NUL", GENERIC_WRITE, FILE_SHARE_WRITE,
                                                     &inherited, OPEN_EXISTING, 0, nullptr));
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = nowhere.get();
    startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION process{};
    ProcessCost cost;
    DWORD code = 0;
    cost.seconds = seconds([&] {
        if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                            &startup, &process))
            throw std::runtime_error("the program does not start");
        cost.megabytes = watch_memory(process.hProcess);
        GetExitCodeProcess(process.hProcess, &code);
    });
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    if (code != 0) throw std::runtime_error("the program failed");
    return cost;
}

std::wstring quoted(const std::wstring& text) {
    return L"\"" + text + L"\"";
}

struct Export {
    Figures time;
    Figures memory;
};

Export measure_export() {
    const ScratchFile project(project_text(rows, 0));
    const ScratchFile target;
    const std::wstring own = automation::module_path();
    const std::wstring folder = own.substr(0, own.find_last_of(L'\\') + 1);
    const std::wstring export_command = quoted(folder + L"tessera.exe") + L" export " +
                                        quoted(project.path()) + L" --quiet --out " +
                                        quoted(target.path());
    const std::wstring baseline_command = quoted(own) + L" " + save_command + L" " +
                                          quoted(project.path()) + L" " + quoted(target.path());
    std::vector<double> memory;
    std::vector<double> baseline_memory;
    const auto run = [](const std::wstring& command, std::vector<double>& megabytes) {
        const ProcessCost cost = run_process(command);
        megabytes.push_back(cost.megabytes);
        return cost.seconds;
    };
    Export result;
    result.time = compare(
        9, rows, [&] { return run(export_command, memory); },
        [&] { return run(baseline_command, baseline_memory); });
    result.memory = {median(memory), median(baseline_memory), "MB"};
    return result;
}

// Time and memory come from the same runs.
const Export& measured_export() {
    static const Export measured = measure_export();
    return measured;
}

}  // namespace

int execute_and_save(const wchar_t* project_path, const wchar_t* target_path) {
    const auto kit = create<IHostKit>(L"Kelos.HostKit");
    const auto workset = get(kit, &IHostKit::Open, Bstr(project_path).get());
    const auto list = get(kit, &IHostKit::get_Document, Bstr(L"Liste").get());
    const auto runner = create<ITesseraVexScript>(L"Tessera.VexScript");
    call(runner, &ITesseraVexScript::putref_WorkSet, workset.get());
    call(runner, &ITesseraVexScript::putref_Document, list.get());
    const Bstr script = get(runner, &ITesseraVexScript::GetVexScript, list.get(), VARIANT_FALSE);
    const auto document = get(runner, &ITesseraVexScript::Execute, script.get());
    // Not every parser knows the encoding that the declaration names.
    const auto declaration = get(document, &IXMLDOMDocument::get_firstChild);
    call(document, &IXMLDOMDocument::removeChild, declaration.get(), nullptr);
    const Variant path(target_path);
    call(document, &IXMLDOMDocument::save, static_cast<VARIANT>(path));
    return 0;
}

Benchmarks program_benchmarks() {
    constexpr char baseline[] = "Execute of the same, and the parser's save";
    return {{"export", "tessera.exe export, 20,000 rows", baseline, 1.3,
             [] { return measured_export().time; }},
            {"export-memory", "tessera.exe export, 20,000 rows, memory", baseline, 1.15,
             [] { return measured_export().memory; }}};
}

}  // namespace bench
