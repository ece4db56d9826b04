// Rows of mapping scripts, and whole runs.

#include <cstdio>
#include <span>
#include <stdexcept>

#include "automation/bstr_view.h"
#include "automation/conversion.h"
#include "bench/component/bare_script.h"
#include "bench/component/blueprint.h"
#include "bench/component/host_calls.h"
#include "bench/component/measure.h"
#include "tests/support/heap.h"

namespace bench {
namespace {

constexpr int rounds = 31;

// A loop around one statement. "P" is the pump.
std::wstring loop(const wchar_t* statement, int rows) {
    return L"Sub DoVex()\r\nSet P = MappingTableExcel.SourceObject(1)\r\nFor I = 1 To " +
           std::to_wstring(rows) + L"\r\n" + statement + L"\r\nNext\r\nEnd Sub";
}

double run_time(const Project& project, const std::wstring& script) {
    ComPtr<IXMLDOMDocument> document;
    return seconds([&] { document = execute(project, script); });
}

// Making the elements, and handing their text to the host: a run traces what it made at its end.
double creation_time(std::span<const Blueprint> blueprints, int rows) {
    const auto service = create<IKelosService>(L"Kelos.Service");
    const RootedDocument target(L"Contents");
    return seconds([&] {
        for (int i = 0; i < rows; ++i)
            blueprints[static_cast<std::size_t>(i) % blueprints.size()].create(
                target.document.get(), target.root.get());
        call(service, &IKelosService::Trace, dom::xml(target.root).get());
    });
}
double creation_time(const Blueprint& blueprint, int rows) {
    return creation_time(std::span(&blueprint, 1), rows);
}

// The first element that the script makes.
Blueprint blueprint_of(const Project& project, const std::wstring& script) {
    return Blueprint(dom::child_named(dom::root(execute(project, script)), L"Content"));
}

// A baseline that makes other calls of the host than the component measures something else: what
// one more row adds to the log must be what the work puts there. Throws, with the logs.
template <class Work>
void require_calls_of_row(const Project& project, const wchar_t* statement, Work&& work) {
    const std::wstring two = project.calls_of([&] { execute(project, loop(statement, 2)); });
    const std::wstring three = project.calls_of([&] { execute(project, loop(statement, 3)); });
    const std::wstring row = project.calls_of(work);
    if (three.size() - two.size() == row.size() && two.find(row) != two.npos) return;
    std::fprintf(stderr, "component:\n%ls\nbaseline of a row:\n%ls\n", two.c_str(), row.c_str());
    throw std::runtime_error("the baseline makes other calls of the host than the component");
}

// A row of a statement against an empty call, the host calls of the row, and the creation of its
// element.
template <class HostCalls>
Figures row(const wchar_t* statement, HostCalls&& host_calls) {
    constexpr int rows = 1000;
    const Project project;
    require_calls_of_row(project, statement, host_calls(project));
    const std::wstring script = loop(statement, rows);
    const Blueprint blueprint = blueprint_of(project, loop(statement, 1));
    const auto read = host_calls(project);
    return compare(
        rounds, rows, [&] { return run_time(project, script); },
        [&] {
            const auto global = automation::make<EmptyGlobal>(project.mapping_table());
            double time = seconds([&] { run_script(script, global->main_interface()); });
            time += seconds([&] {
                for (int i = 0; i < rows; ++i)
                    read();
            });
            return time + creation_time(blueprint, rows);
        });
}

Figures fixed_row() {
    return row(L"ContentFix \"S!A1\", \"x\"", [](const Project& project) {
        return [list = project.list()] { read_language(list.get()); };
    });
}

Figures known_row() {
    return row(L"Content \"S!A1\", P, \"Description\", \"\", \"\", \"\"",
               [](const Project& project) {
                   return [pump = project.pump(), known = KnownRow()] { known.read(pump.get()); };
               });
}

// What "CurrentObject" is to the expressions of the platform's engine.
class CurrentObject : public automation::PlainObject<IDispatch> {
  public:
    explicit CurrentObject(IDispatch* object) : object_(object) {}

    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        *ids = 1;
        return _wcsicmp(*names, L"CurrentObject") == 0 ? S_OK : DISP_E_UNKNOWNNAME;
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                        UINT*) override {
        if (result) *static_cast<VARIANT*>(result) = Variant(object_.get()).detach();
        return S_OK;
    }

  private:
    ComPtr<IDispatch> object_;
};

Figures expression_row() {
    constexpr int rows = 200;
    const Project project;
    const Blueprint blueprint =
        blueprint_of(project, loop(L"Content \"S!A1\", P, \"Label & 1\", \"\", \"\", \"\"", 1));
    const auto pump = project.pump();
    const auto current = automation::make_plain<CurrentObject>(pump.get());
    if (automation::to_text(evaluate(L"CurrentObject.Label & 1", current.get())).view() !=
        L"P-1011")
        automation::fail(E_UNEXPECTED, L"the bare evaluation gave another value");
    const Bstr pointer(L"S!A1");
    const Bstr expression(L"Label & 1");
    const Bstr empty;
    return compare(
        rounds, rows,
        [&] {
            const auto global = create<ITesseraSCGlobal>(L"Tessera.SCGlobal");
            return seconds([&] {
                for (int i = 0; i < rows; ++i)
                    call(global, &ITesseraSCGlobal::Content, pointer.get(), pump.get(),
                         expression.get(), automation::lend(empty), empty.get(), empty.get(),
                         VARIANT_FALSE, VARIANT_FALSE);
            });
        },
        [&] {
            const RootedDocument target(L"Contents");
            return seconds([&] {
                for (int i = 0; i < rows; ++i) {
                    evaluate(L"CurrentObject.Label & 1", current.get());
                    blueprint.create(target.document.get(), target.root.get());
                }
            });
        });
}

// The default script over a table in which properties and fixed values take turns.
Figures default_script() {
    constexpr int rows = 10'000;
    const Project project(rows);
    const auto sample = execute(Project(2), {});
    const auto known = dom::child_named(dom::root(sample), L"Content");
    const Blueprint blueprints[] = {Blueprint(known),
                                    Blueprint(dom::sibling_named(known, L"Content"))};
    const auto runner = create<ITesseraVexScript>(L"Tessera.VexScript");
    const std::wstring script =
        get(runner, &ITesseraVexScript::GetVexScript, project.list().get(), VARIANT_FALSE).str();
    const auto pump = project.pump();
    const auto list = project.list();
    const KnownRow known_row;
    return compare(
        5, rows, [&] { return run_time(project, script); },
        [&] {
            const auto global = automation::make<EmptyGlobal>(project.mapping_table());
            double time = seconds([&] { run_script(script, global->main_interface()); });
            time += seconds([&] {
                for (int i = 0; i < rows; i += 2) {
                    known_row.read(pump.get());
                    read_language(list.get());
                }
            });
            return time + creation_time(blueprints, rows);
        });
}

// How often as long a row takes among 100,000 as among 1,000.
Figures growth() {
    constexpr int few = 1'000;
    constexpr int many = 100'000;
    constexpr wchar_t statement[] = L"ContentFix \"S!A1\", \"x\"";
    const Project project;
    const std::wstring few_rows = loop(statement, few);
    const std::wstring many_rows = loop(statement, many);
    const Blueprint blueprint = blueprint_of(project, loop(statement, 1));
    std::vector<double> component;
    std::vector<double> baseline;
    // Few and many take turns, too: what is compared is how both change.
    for (int round = 0; round < 3; ++round) {
        const double few_time = run_time(project, few_rows) / few;
        component.push_back(run_time(project, many_rows) / many / few_time);
        const double few_created = creation_time(blueprint, few) / few;
        baseline.push_back(creation_time(blueprint, many) / many / few_created);
    }
    return {median(component), median(baseline), "times"};
}

// Reads what the process has allocated at the calls of the host with two numbers.
class MemoryProbe : public automation::Object<MemoryProbe, IHostKitWatcher> {
  public:
    MemoryProbe(long first, long second) : first_(first), second_(second) {}

    STDMETHODIMP Called(long, long) override {
        ++calls_;
        if (calls_ == first_) bytes_ = test::busy_bytes();
        if (calls_ == second_) bytes_ = test::busy_bytes() - bytes_;
        return S_OK;
    }
    std::size_t bytes_between() const noexcept { return bytes_; }

  private:
    const long first_;
    const long second_;
    long calls_ = 0;
    std::size_t bytes_ = 0;
};

// What the process holds for a row while the run lives, and what the parser's nodes of it take.
Figures memory() {
    constexpr long rows = 10'000;
    constexpr long calls_of_row = 3;
    constexpr long first = 1'000;
    constexpr wchar_t statement[] = L"ContentFix \"S!A1\", \"x\"";
    const Project project;
    const Blueprint blueprint = blueprint_of(project, loop(statement, 1));
    const auto probe = automation::make<MemoryProbe>(first, first + rows * calls_of_row);
    call(project.kit, &IHostKit::putref_Watcher, probe->main_interface());
    execute(project, loop(statement, rows + first));
    call(project.kit, &IHostKit::putref_Watcher, nullptr);

    const RootedDocument target(L"Contents");
    const std::size_t before = test::busy_bytes();
    for (long i = 0; i < rows; ++i)
        blueprint.create(target.document.get(), target.root.get());
    const double of_nodes = static_cast<double>(test::busy_bytes() - before);
    return {static_cast<double>(probe->bytes_between()) / rows, of_nodes / rows, "bytes", true};
}

}  // namespace

void print_profile() {
    constexpr int rows = 1000;
    const Project project;
    const std::wstring script =
        loop(L"Content \"S!A1\", P, \"Description\", \"\", \"\", \"\"", rows);
    const auto document = execute(project, script);
    const auto root = dom::root(document);
    const auto object = create<ITessera>(L"Tessera.Tessera");
    call(object, &ITessera::put_XMLNode, nullptr, dom::first_child(root).get());
    const auto service = create<IKelosService>(L"Kelos.Service");
    const auto pump = project.pump();
    const KnownRow known_row;
    const auto global = automation::make<EmptyGlobal>(project.mapping_table());
    const auto repeat = [](auto&& work) {
        return seconds([&] {
            for (int i = 0; i < rows; ++i)
                work();
        });
    };
    struct Part {
        const char* name;
        std::function<double()> time;
        std::vector<double> times{};
    };
    Part parts[] = {
        {"the whole", [&] { return run_time(project, script); }},
        {"script engine and dispatch",
         [&] { return seconds([&] { run_script(script, global->main_interface()); }); }},
        {"host", [&] { return repeat([&] { known_row.read(pump.get()); }); }},
        {"writing the element",
         [&] {
             const RootedDocument target(L"Contents");
             return repeat([&] { get(object, &ITessera::get_XMLNode, target.root.get()); });
         }},
        {"trace of the document",
         [&] {
             return seconds([&] { call(service, &IKelosService::Trace, dom::xml(root).get()); });
         }},
    };
    for (int round = 0; round < rounds; ++round)
        for (Part& part : parts)
            part.times.push_back(part.time());
    const double total = median(parts[0].times);
    double rest = total;
    std::printf("one row of a known property: %.1f us\n", total * 1e6 / rows);
    const auto print = [&](const char* name, double time) {
        std::printf("  %-34s %5.1f %%\n", name, time * 100 / total);
    };
    for (const Part& part : std::span(parts).subspan(1)) {
        print(part.name, median(part.times));
        rest -= median(part.times);
    }
    print("records, texts and everything else", rest);
}

Benchmarks script_benchmarks() {
    constexpr char sum[] = "bare script call, its host calls, direct creation, trace of the xml";
    return {
        {"fixed-row", "ContentFix from a script", sum, 0.9, fixed_row},
        {"known-row", "Content of a known name from a script", sum, 1.0, known_row},
        {"expression-row", "Content of an expression",
         "bare evaluation on an engine of a kept factory, direct creation", 1.2, expression_row},
        {"default-script", "Execute, default script, 10,000 rows",
         "bare script loop, bare host calls, direct creation, trace of the xml", 1.0,
         default_script},
        {"growth", "time per row at 100,000 rows against 1,000",
         "the same of direct creation and the trace", 1.05, growth},
        {"memory", "memory per row beyond the parser's", "the parser's nodes", 64, memory},
    };
}

}  // namespace bench
