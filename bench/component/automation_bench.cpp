// What a member costs before it does anything, and the codecs behind their members.

#include "bench/component/empty_progress.h"
#include "bench/component/measure.h"
#include "bench/component/project.h"
#include "bench/processor_time.h"
#include "bench/sample_texts.h"

namespace bench {
namespace {

constexpr int calls = 20'000;
constexpr int rounds = 31;

template <class Call>
double call_time(Call&& call) {
    return seconds([&] {
        for (int i = 0; i < calls; ++i)
            call();
    });
}

Figures through_vtable() {
    const auto component = create<ITesseraProgress>(L"Tessera.Progress");
    const ComPtr<ITesseraProgress> empty = make_empty_progress();
    const auto read_where = [](ITesseraProgress* progress) {
        return call_time([&] {
            uceWhere where;
            progress->get_Where(&where);
        });
    };
    return compare(
        rounds, calls, [&] { return read_where(component.get()); },
        [&] { return read_where(empty.get()); });
}

template <class Dispatch>
void invoke_by_name(Dispatch* object, const wchar_t* name) {
    auto* text = const_cast<wchar_t*>(name);
    DISPID id;
    automation::check(object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id));
    DISPPARAMS none{};
    Variant result;
    automation::check(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                     &result, nullptr, nullptr));
}

Figures by_name() {
    const auto component = create<ITesseraProgress>(L"Tessera.Progress");
    const ComPtr<ITesseraProgress> empty = make_empty_progress();
    return compare(
        rounds, calls,
        [&] { return call_time([&] { invoke_by_name(component.get(), L"Where"); }); },
        [&] { return call_time([&] { invoke_by_name(empty.get(), L"Where"); }); });
}

// The platform's dispatch over a type library, without the object in between.
class PlatformDispatch {
  public:
    explicit PlatformDispatch(ITesseraProgress* object) : object_(object) {
        automation::check(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, info_.put()));
    }
    HRESULT GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
        return info_->GetIDsOfNames(names, count, ids);
    }
    HRESULT Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS* parameters, VARIANT* result,
                   EXCEPINFO* exception, UINT* bad_argument) {
        return info_->Invoke(object_.get(), member, kind, parameters, result, exception,
                             bad_argument);
    }

  private:
    ComPtr<ITesseraProgress> object_;
    ComPtr<ITypeInfo> info_;
};

Figures dispatch() {
    const ComPtr<ITesseraProgress> empty = make_empty_progress();
    PlatformDispatch platform(empty.get());
    return compare(
        rounds, calls, [&] { return call_time([&] { invoke_by_name(empty.get(), L"Where"); }); },
        [&] { return call_time([&] { invoke_by_name(&platform, L"Where"); }); });
}

using Codec = HRESULT (STDMETHODCALLTYPE ITesseraGFunctions::*)(BSTR, BSTR*);

double processor_time() {
    FILETIME created, exited, kernel, user;
    GetThreadTimes(GetCurrentThread(), &created, &exited, &kernel, &user);
    const auto seconds = [](const FILETIME& time) {
        return (time.dwHighDateTime * 4294967296.0 + time.dwLowDateTime) * 1e-7;
    };
    return seconds(kernel) + seconds(user);
}

// The baseline is the native program's, which bench.sh runs and the report puts in.
Figures codec(Codec member, Codec inverse) {
    const auto functions = create<ITesseraGFunctions>(L"Tessera.GFunctions");
    Bstr text(tessera::samples::RandomTexts(1).query_rows(tessera::samples::megabyte));
    if (inverse) text = get(functions, inverse, text.get());
    const auto call_once = [&] { get(functions, member, text.get()); };
    return {processor_seconds(processor_time, call_once) * 1e6, 0};
}

Benchmark codec_benchmark(const char* name, const char* work, Codec member,
                          Codec inverse = nullptr) {
    return {name, work, "the native codec", 1.5, [=] { return codec(member, inverse); }};
}

}  // namespace

Benchmarks automation_benchmarks() {
    using Functions = ITesseraGFunctions;
    return {
        {"vtable", "a member that returns a constant, through the vtable", "an empty member", 1.3,
         through_vtable},
        {"by-name", "a member that returns a constant, by name", "an empty member", 1.3, by_name},
        {"dispatch", "GetIDsOfNames and Invoke of an empty member",
         "the platform's type-library dispatch", 1.0, dispatch},
        codec_benchmark("codec-compress", "LCSSCompress of 1 MB of query rows",
                        &Functions::LCSSCompress),
        codec_benchmark("codec-decompress", "LCSSDecompress to 1 MB of query rows",
                        &Functions::LCSSDecompress, &Functions::LCSSCompress),
        codec_benchmark("codec-uuencode", "UUEncode of 1 MB of query rows", &Functions::UUEncode),
        codec_benchmark("codec-uudecode", "UUDecode to 1 MB of query rows", &Functions::UUDecode,
                        &Functions::UUEncode),
    };
}

}  // namespace bench
