// Tests of internals: how failed calls become exceptions, and exceptions reports.

#include <new>
#include <stdexcept>

#include "automation/object.h"
#include "support/com_fixture.h"

using automation::Bstr;
using automation::ComPtr;
using automation::current_error;
using automation::Error;
using automation::ErrorReport;

namespace {

// An object that leaves error info, and says so for ITesseraDocument only.
class Speaker : public automation::Object<Speaker, ITesseraDocument> {
  public:
    STDMETHODIMP get_Pointer(BSTR*) override { return leave(L"the speaker's", L"Speaker"); }
    STDMETHODIMP put_Pointer(BSTR) override { return E_NOTIMPL; }

    static HRESULT leave(const wchar_t* description, const wchar_t* source) {
        ComPtr<ICreateErrorInfo> created;
        CreateErrorInfo(created.put());
        created->SetDescription(const_cast<wchar_t*>(description));
        created->SetSource(const_cast<wchar_t*>(source));
        SetErrorInfo(0, created.as<IErrorInfo>().get());
        return E_ABORT;
    }
};

bool error_info_is_left() {
    ComPtr<IErrorInfo> info;
    return GetErrorInfo(0, info.put()) == S_OK;
}

template <class Action>
ErrorReport report_of(Action&& action) {
    try {
        action();
    } catch (...) {
        return current_error();
    }
    return {S_OK, Bstr(), Bstr()};
}

}  // namespace

TEST_CASE("every exception has the number and the words of one run-time error") {
    struct Case {
        void (*raise)();
        HRESULT code;
        const wchar_t* description;
    };
    const Case cases[] = {
        {[] { throw std::bad_alloc(); }, E_OUTOFMEMORY, L"Out of memory"},
        {[] { throw std::length_error(""); }, E_OUTOFMEMORY, L"Out of memory"},
        {[] { throw std::overflow_error(""); }, DISP_E_OVERFLOW, L"Overflow"},
        {[] { throw std::out_of_range(""); }, DISP_E_BADINDEX, L"Subscript out of range"},
        {[] { throw std::invalid_argument(""); }, CTL_E_ILLEGALFUNCTIONCALL,
         L"Invalid procedure call or argument"},
        {[] { throw std::runtime_error(""); }, E_FAIL, L"Unspecified error"},
        {[] { throw 1; }, E_FAIL, L"Unspecified error"},
        {[] { automation::fail(CTL_E_INVALIDUSEOFNULL); }, CTL_E_INVALIDUSEOFNULL,
         L"Invalid use of Null"},
        {[] { automation::fail(DISP_E_TYPEMISMATCH); }, DISP_E_TYPEMISMATCH, L"Type mismatch"},
        {[] { automation::fail(DISP_E_MEMBERNOTFOUND); }, DISP_E_MEMBERNOTFOUND,
         L"Object doesn't support this property or method"},
        {[] { automation::fail(E_ABORT, L"my words"); }, E_ABORT, L"my words"},
        {[] { automation::require(ComPtr<IUnknown>()); }, static_cast<HRESULT>(0x800A005B),
         L"Object variable not set"},
        // Nobody has words for this one.
        {[] { automation::fail(static_cast<HRESULT>(0xA0ABCDEF)); },
         static_cast<HRESULT>(0xA0ABCDEF), L"Error &HA0ABCDEF"},
        {[] { automation::check(S_FALSE); }, S_OK, L""},
    };
    for (const Case& c : cases) {
        const ErrorReport report = report_of(c.raise);
        CAPTURE(c.description);
        CHECK(report.code == c.code);
        CHECK(report.description.view() == c.description);
        CHECK(report.source.empty());
    }
    // The system's words come without their line end.
    const auto known =
        report_of([] { automation::fail(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND)); });
    REQUIRE_FALSE(known.description.empty());
    CHECK(known.description.view().find_first_of(L"\r\n") == std::wstring_view::npos);
}

TEST_CASE_FIXTURE(test::ComFixture, "a callee's error info is taken when it is the callee's own") {
    const auto speaker = automation::make<Speaker>();
    ITesseraDocument* const callee = speaker.get();

    auto report = report_of([&] { automation::get(callee, &ITesseraDocument::get_Pointer); });
    CHECK(report.code == E_ABORT);
    CHECK(report.description.view() == L"the speaker's");
    CHECK(report.source.view() == L"Speaker");
    CHECK_FALSE(error_info_is_left());

    // Stale info of somebody else: the interface is not the speaker's, there is no callee, or the
    // callee leaves no error info. It is not taken and does not wait for the next failure either.
    const auto stream = [] {
        ComPtr<IStream> made;
        CreateStreamOnHGlobal(nullptr, TRUE, made.put());
        return made;
    }();
    const auto fail_as = [](IUnknown* by, REFIID id) {
        Speaker::leave(L"stale", L"Other");
        return report_of([&] { automation::fail_callee(E_FAIL, by, id); });
    };
    for (const ErrorReport& stale :
         {fail_as(callee, __uuidof(ITesseraValue)), fail_as(nullptr, __uuidof(ITesseraDocument)),
          fail_as(stream.get(), __uuidof(IStream))}) {
        CHECK(stale.code == E_FAIL);
        CHECK(stale.description.view() == L"Unspecified error");
        CHECK(stale.source.empty());
        CHECK_FALSE(error_info_is_left());
    }
    // A call that succeeds leaves what is there alone.
    Speaker::leave(L"earlier", L"");
    automation::check(S_OK, callee);
    CHECK(error_info_is_left());
}
