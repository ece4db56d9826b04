// Tests of internals: every allocation of the component fails once, and once for good.
#include <cstdlib>
#include <functional>
#include <new>

#include "content/tessera_content.h"
#include "functions/gfunctions.h"
#include "mapping/sc_global.h"
#include "script/vex_script.h"
#include "support/content_text.h"
#include "support/full_run.h"

using automation::Bstr;
using automation::call;
using automation::ComPtr;
using automation::get;
using automation::make;
using automation::Variant;
using test::ProjectFixture;

namespace {

// Counts down to the allocation that fails; 0: none does.
long allocations_left = 0;
bool fails_for_good = false;
bool has_failed = false;

bool is_to_fail() noexcept {
    if (allocations_left == 0) return false;
    if (allocations_left > 1) return --allocations_left, false;
    if (!fails_for_good) allocations_left = 0;
    has_failed = true;
    return true;
}

BSTR WINAPI allocate_string(const OLECHAR* text, UINT length) {
    static const auto platform =
        reinterpret_cast<decltype(&SysAllocStringLen)>(reinterpret_cast<void*>(
            GetProcAddress(GetModuleHandleW(L"oleaut32.dll"), "SysAllocStringLen")));
    return is_to_fail() ? nullptr : platform(text, length);
}

}  // namespace

// Not inlined: the compiler would take them for a pair that does not match.
[[gnu::noinline]] void* operator new(std::size_t size) {
    void* const memory = is_to_fail() ? nullptr : std::malloc(size);
    if (!memory) throw std::bad_alloc();
    return memory;
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

extern "C" {
// The entry of the import table that the linked component allocates its strings through.
extern BSTR(WINAPI* const imported_allocate_string)(const OLECHAR*,
                                                    UINT) asm("__imp_SysAllocStringLen");
BSTR(WINAPI* const imported_allocate_string)(const OLECHAR*, UINT) = allocate_string;
}

TEST_CASE_FIXTURE(ProjectFixture, "whichever allocation fails, it is reported and nothing leaks") {
    const auto pump = object(L"Anlage|Pumpe");
    const auto sheet = document(L"Datenblatt");
    const auto row = [&](tessera::SCGlobal& global, const wchar_t* property) {
        global.Content(Bstr(L"S!A1").get(), pump.get(), Bstr(property).get(), Variant(L""), nullptr,
                       nullptr, VARIANT_FALSE, VARIANT_FALSE);
    };
    const std::pair<const wchar_t*, std::function<void()>> scenarios[] = {
        {L"rows",
         [&] {
             const auto global = make<tessera::SCGlobal>();
             global->set_workset(workset);
             global->set_document(sheet);
             row(*global, L"Description");
             row(*global, L"SystemUID");
             global->ContentFix(Bstr(L"S!A2").get(), Variant(L"a\r\nb"), VARIANT_FALSE,
                                VARIANT_FALSE);
             global->AddOptionsToXml();
         }},
        {L"records",
         [&] {
             const auto written = make<tessera::Tessera>();
             written->kelos_object().set_object(pump.get());
             written->value().set_kelos_value(uccVBString, Variant(L"a\r\nb"));
             ComPtr<ITesseraValueItem> item;
             written->value_items().AddNew(Variant(1.5), Variant(L"x"), 1031, uccVBString,
                                           uccVBString, -1, item.put());
             const auto node = written->write_below({}).node();
             const auto read = make<tessera::Tessera>();
             read->putref_WorkSet(workset.get());
             read->putref_XMLNode(nullptr, node.get());
         }},
        {L"export",
         [&] {
             const auto runner = make<tessera::VexScript>();
             runner->putref_WorkSet(workset.get());
             runner->putref_Document(sheet.get());
             runner->execute(runner->vex_script(sheet.get()).view());
         }},
        {L"codecs",
         [&] {
             using tessera::GFunctions;
             const Bstr packed = GFunctions::lcss_compress(L"a text, a text, a text");
             GFunctions::lcss_decompress(packed.view());
             GFunctions::uu_decode(GFunctions::uu_encode(L"a text").view());
             GFunctions::decode(GFunctions::encode(L"a text").view());
         }},
    };
    for (const auto& [name, act] : scenarios) {
        act();
        REQUIRE(error_count() == 0);
        for (const bool for_good : {false, true}) {
            CAPTURE(for_good);
            has_failed = true;
            long n = 1;
            for (; has_failed; ++n) {
                CAPTURE(n);
                const long before = automation::live_count();
                has_failed = false;
                fails_for_good = for_good;
                allocations_left = n;
                bool own = false;  // the test itself could not allocate
                try {
                    act();
                } catch (...) {
                    own = true;
                }
                allocations_left = 0;
                CHECK(automation::live_count() == before);
                if (has_failed && !own && !for_good) CHECK(error_count() + message_count() > 0);
                call(service(), &IHostKitService::Clear);
            }
            test::tell_figure("allocations that failed", n - 2);
        }
        act();
        CHECK(error_count() == 0);
    }
}
