// Through the DLL: the host service, its records and windows, the compressor and the encoder.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>
#include <thread>
#include <vector>

#include "automation/conversion.h"
#include "support/transcript.h"

using namespace test;

namespace {

using Bytes = std::vector<std::uint8_t>;

Variant byte_array(const Bytes& bytes) {
    Variant result;
    result.vt = VT_ARRAY | VT_UI1;
    result.parray = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
    REQUIRE(result.parray);
    std::copy(bytes.begin(), bytes.end(), static_cast<std::uint8_t*>(result.parray->pvData));
    return result;
}

Bytes bytes_of(const Variant& value) {
    REQUIRE(value.vt == (VT_ARRAY | VT_UI1));
    const auto* const data = static_cast<const std::uint8_t*>(value.parray->pvData);
    return Bytes(data, data + value.parray->rgsabound[0].cElements);
}

// Bytes that compress badly, the same in every run.
Bytes noise(std::size_t size) {
    Bytes bytes(size);
    std::uint32_t state = 12345;
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>((state = state * 1664525 + 1013904223) >> 24);
    return bytes;
}

long answer_message(const ComPtr<IHostKitService>& service, const wchar_t* text,
                    const wchar_t* title) {
    return get(service, &IHostKitService::ShowMessage, Bstr(text).get(), 48L, Bstr(title).get());
}

// Plays a transcript on the service, whose members need no prefix.
void check(const ComPtr<IHostKitService>& service, const std::wstring& transcript) {
    check_transcript(transcript, {{L"Service", service.get()}});
}

// A plain top-level window.
class Window {
  public:
    Window()
        : handle_(CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200, nullptr,
                                  nullptr, nullptr, nullptr)) {
        REQUIRE(handle_);
    }
    ~Window() { DestroyWindow(handle_); }
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    HWND get() const { return handle_; }

  private:
    HWND handle_;
};

// Sends a standard stream of the process to a file while it lives.
class RedirectedStream {
  public:
    explicit RedirectedStream(DWORD stream)
        : stream_(stream),
          old_(GetStdHandle(stream)),
          path_(std::filesystem::temp_directory_path() /
                (L"hostkit-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
                 std::to_wstring(stream))),
          file_(CreateFileW(path_.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                            0, nullptr)) {
        SetStdHandle(stream_, file_);
    }
    ~RedirectedStream() {
        SetStdHandle(stream_, old_);
        CloseHandle(file_);
        std::filesystem::remove(path_);
    }
    RedirectedStream(const RedirectedStream&) = delete;
    RedirectedStream& operator=(const RedirectedStream&) = delete;

    std::string content() const {
        std::ifstream in(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

  private:
    DWORD stream_;
    HANDLE old_;
    std::filesystem::path path_;
    HANDLE file_;
};

// The service of a DLL that COM does not know to be loaded.
ComPtr<IHostKitService> service_of(HMODULE kit) {
    using GetClassObject = HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**);
    const auto get_class_object = reinterpret_cast<GetClassObject>(
        reinterpret_cast<void*>(GetProcAddress(kit, "DllGetClassObject")));
    REQUIRE((get_class_object != nullptr));
    ComPtr<IClassFactory> factory;
    REQUIRE(get_class_object(__uuidof(Service), IID_IClassFactory,
                             reinterpret_cast<void**>(factory.put())) == S_OK);
    ComPtr<IHostKitService> service;
    REQUIRE(factory->CreateInstance(nullptr, __uuidof(IHostKitService),
                                    reinterpret_cast<void**>(service.put())) == S_OK);
    return service;
}

// Presses a button of the box with this title as soon as it is there.
class BoxPresser {
  public:
    BoxPresser(const wchar_t* title, int button) {
        title_ = title;
        button_ = button;
        timer_ = SetTimer(nullptr, 0, 20, press);
    }
    ~BoxPresser() { KillTimer(nullptr, timer_); }
    BoxPresser(const BoxPresser&) = delete;
    BoxPresser& operator=(const BoxPresser&) = delete;

  private:
    static void CALLBACK press(HWND, UINT, UINT_PTR, DWORD) {
        if (const HWND box = FindWindowW(L"#32770", title_.c_str())) EndDialog(box, button_);
    }
    static inline std::wstring title_;
    static inline int button_ = 0;
    UINT_PTR timer_ = 0;
};

}  // namespace

// First, while nothing else has loaded the DLL.
TEST_CASE("the kit can be unloaded while a thread that used it goes on") {
    const HMODULE kit = LoadLibraryW(L"KelosHostKit.dll");
    REQUIRE(kit);
    std::promise<void> used;
    std::promise<void> unloaded;
    std::thread user([&] {
        call(service_of(kit), &IHostKitService::Trace, Bstr(L"still kept at the end").get());
        used.set_value();
        unloaded.get_future().wait();
    });
    used.get_future().wait();
    CHECK(is_idle(L"KelosHostKit.dll"));
    FreeLibrary(kit);
    CHECK_FALSE(GetModuleHandleW(L"KelosHostKit.dll"));
    unloaded.set_value();
    user.join();
}

TEST_CASE_FIXTURE(ComFixture, "all service objects of a thread share their records") {
    {
        const auto other = create<IHostKitService>(L"Kelos.Service");
        CHECK(answer_message(other, L"Schöne \x2192 Welt", L"Title") == IDOK);
    }
    CHECK(message_count() == 1);
    CHECK(message(1) == L"Title|48|Schöne \x2192 Welt");

    // Another thread has its own, which ends with it.
    std::thread([] {
        REQUIRE(SUCCEEDED(CoInitialize(nullptr)));
        {
            const auto own = create<IHostKitService>(L"Kelos.Service");
            const auto messages = get(own, &IHostKitService::get_Messages);
            CHECK(get(messages, &IHostKitMessages::get_Count) == 0);
            answer_message(own, L"elsewhere", L"Thread");
            CHECK(get(messages, &IHostKitMessages::get_Count) == 1);
        }
        CoUninitialize();
    }).join();
    CHECK(message_count() == 1);
}

TEST_CASE_FIXTURE(ComFixture, "records are read by scripts, from 1, and as they are now") {
    check(service(),
          LR"(
    ReportError &H80004005, "It broke", "Tessera.SCGlobal", "Public Function 'Content'"
    ? ShowMessage("Read me", 48, "Note") -> 1
    Trace "first"
    Trace "second"
    ? Messages.Count & Errors.Count & Traces.Count & ScriptErrors.Count -> 1120
    Set message = Messages.Item(1)
    ? message.Title & "|" & message.Text & "|" & message.Style & "|" & message.Answer -> Note|Read me|48|1
    Set report = Errors.Item(1)
    ? report.Source & "|" & report.Label & "|" & report.Description & "|" & Hex(report.Number) -> Tessera.SCGlobal|Public Function 'Content'|It broke|80004005
    ? Traces.Item(1) & Traces.Item(2) -> firstsecond
    ? Messages.Item(0) -> ! Subscript out of range
    ? Traces.Item(3) -> ! Subscript out of range
    Set kept = Traces
    Clear
    ? kept.Count & Messages.Count & Errors.Count -> 000
    ' Only the newest traces are kept.
    usual = TraceLimit
    TraceLimit = 3
    For i = 1 To 5 : Trace CStr(i) : Next
    ? Traces.Count & " " & Traces.Item(1) & Traces.Item(3) -> 3 35
    TraceLimit = 1
    ? Traces.Item(1) -> 5
    TraceLimit = 0
    Trace "6"
    ? Traces.Count -> 0
    TraceLimit = -1 -> ! A trace limit is not negative
    TraceLimit = usual
    ' A host may have no application.
    OffersApplication = False
    ? Application -> Nothing
    OffersApplication = True
    ? Application.CurrentWorkset -> Nothing
)");
}

TEST_CASE_FIXTURE(ComFixture, "text keys become texts of the language, and other texts stay") {
    check(service(),
          LR"(
    ? TranslateText("~00811 Bitte warten...") -> Bitte warten...
    ? TranslateText("~00911 gelesene Variable: '") -> gelesene Variable: '
    ? "<" & TranslateText("~ABCDE Ärger ") & ">" -> <Ärger >
    ? TranslateText("") & TranslateText("~") & TranslateText("~00811") -> ~~00811
    ? TranslateText("~0081 Bitte") & TranslateText("~0081g Bitte") -> ~0081 Bitte~0081g Bitte
    ? TranslateText("00811 Bitte") & TranslateText(" ~00811 Bitte") -> 00811 Bitte ~00811 Bitte
    ? TranslateText("~00811_Bitte") -> ~00811_Bitte
    Language = 1033
    ? TranslateText("~00811 Bitte warten...") & TranslateText("~001D4 Abbrechen") -> Please wait...Abort
    ? TranslateText("~02ad8 Unbekannte Property") -> Unknown property or property constant
    ' What the table does not have is better read in German than not at all.
    ? TranslateText("~fffff Unbekannt") -> Unbekannt
    Language = 1036 -> ! The kit speaks German and English only
    ? Language -> 1033
    Language = 1031
)");
}

TEST_CASE_FIXTURE(ComFixture, "a failing service fails in every member that the component calls") {
    call(service(), &IHostKitService::FailService, static_cast<long>(E_ACCESSDENIED));
    long answer = 0;
    Bstr text;
    ComPtr<IKelosApplication> application;
    ComPtr<IKelosUIService> ui;
    ComPtr<IKelosControlWrapper> wrapper;
    const auto control = make_object();
    IKelosService* const contract = service().get();
    CHECK(contract->TranslateText(nullptr, text.put()) == E_ACCESSDENIED);
    CHECK(contract->ShowMessage(nullptr, 0, nullptr, &answer) == E_ACCESSDENIED);
    CHECK(contract->ReportError(0, nullptr, nullptr, nullptr) == E_ACCESSDENIED);
    CHECK(contract->Trace(nullptr) == E_ACCESSDENIED);
    CHECK(contract->FocusControl(control->dispatch()) == E_ACCESSDENIED);
    CHECK(contract->get_Application(application.put()) == E_ACCESSDENIED);
    CHECK(contract->get_UIService(ui.put()) == E_ACCESSDENIED);
    CHECK(contract->get_ControlWrapper(control->dispatch(), wrapper.put()) == E_ACCESSDENIED);
    CHECK(message_count() + error_count() == 0);

    CHECK(service()->FailService(1) == E_INVALIDARG);
    call(service(), &IHostKitService::FailService, 0L);
    CHECK(contract->Trace(nullptr) == S_OK);
    CHECK(contract->ReportError(0, nullptr, nullptr, nullptr) == S_OK);
    CHECK(error(1) == L"|");
}

TEST_CASE_FIXTURE(ComFixture, "the console mode also writes, in UTF-8") {
    const RedirectedStream output(STD_OUTPUT_HANDLE);
    const RedirectedStream error_output(STD_ERROR_HANDLE);
    call(service(), &IHostKitService::put_Mode, hkmConsole);
    answer_message(service(), L"Größe \x2192", L"Hinweis");
    check(service(),
          LR"(
    Trace "a trace"
    ReportError &H80004005, "It broke", "Tessera", "Sub X"
)");
    call(service(), &IHostKitService::put_Mode, hkmRecording);
    answer_message(service(), L"quiet", L"Hinweis");
    CHECK(output.content() ==
          "Hinweis: Gr\xC3\xB6\xC3\x9F"
          "e \xE2\x86\x92\na trace\n");
    CHECK(error_output.content() == "error &H80004005 in Tessera, Sub X: It broke\n");
    CHECK(message_count() == 2);
}

TEST_CASE_FIXTURE(ComFixture, "messages are answered as set, or by the user of a real box") {
    call(service(), &IHostKitService::put_MessageAnswer, static_cast<long>(IDNO));
    CHECK(answer_message(service(), L"Sure?", L"Question") == IDNO);

    call(service(), &IHostKitService::put_Mode, hkmInteractive);
    {
        const BoxPresser user(L"Real question", IDOK);
        CHECK(answer_message(service(), L"Sure?", L"Real question") == IDOK);
    }
    call(service(), &IHostKitService::put_Mode, hkmRecording);
    call(service(), &IHostKitService::put_MessageAnswer, static_cast<long>(IDOK));
    CHECK(message_count() == 2);
}

TEST_CASE_FIXTURE(ComFixture, "the window service shows forms and lets go of them") {
    const auto application = get(service(), &IHostKitService::get_Application);
    const auto windows = get(application, &IKelosApplication::get_WindowService);
    const auto controller = make_object();
    const auto form = make_object();
    const Window window;
    form->shown_window = window.get();
    const ScriptObjects objects = {{L"Windows", windows.get()},
                                   {L"Form", form->dispatch()},
                                   {L"Controller", controller->dispatch()}};
    check_transcript(
        LR"(
    Windows.RegisterForm Form, 7, Nothing, Controller
    ? Windows.Forms.Count -> 1
    Set entry = Windows.Forms.Item(1)
    ? (entry.Form Is Form) & (entry.Controller Is Controller) & entry.Number -> TrueTrue7
    ? entry.Reference -> Nothing
    Windows.RegisterForm Form, 0, Nothing, Nothing -> ! The form is registered already
    Windows.RegisterForm Nothing, 0, Nothing, Nothing -> ! Object variable not set
)",
        objects);
    CHECK(IsWindowVisible(window.get()));
    const auto forms = get(windows.as<IHostKitWindowService>(), &IHostKitWindowService::get_Forms);
    CHECK(get(get(forms, &IHostKitForms::get_Item, 1L), &IHostKitForm::get_Window) ==
          HandleToLong(window.get()));
    check_transcript(
        LR"(
    Windows.UnregisterForm Form
    Windows.UnregisterForm Form -> ! The form is not registered
    ? Windows.Forms.Count & Windows.RegisteredCount & Windows.UnregisteredCount -> 011
)",
        objects);
    CHECK_FALSE(IsWindowVisible(window.get()));
    CHECK(reference_count(form->dispatch()) == 1);
    CHECK(reference_count(controller->dispatch()) == 1);

    // A form without a window is kept like any other.
    form->shown_window = nullptr;
    call(windows, &IKelosWindowService::RegisterForm, form->dispatch(), 0L,
         static_cast<IDispatch*>(nullptr), static_cast<IDispatch*>(nullptr));
    call(windows, &IKelosWindowService::UnregisterForm, form->dispatch());
}

TEST_CASE_FIXTURE(ComFixture, "the presentation service counts what it was asked for") {
    const auto form = make_object();
    const Window window;
    form->shown_window = window.get();
    check_transcript(
        LR"(
    UIService.FormSetting.Apply Form
    UIService.RefreshControls Form
    UIService.RefreshControls Form
    UIService.ConnectControls Form, Nothing -> ! Object variable not set
    UIService.ConnectControls Form, Form
    ? UIService.AppliedCount & UIService.ConnectedCount & UIService.RefreshedCount -> 112
)",
        {{L"Service", service().get()}, {L"Form", form->dispatch()}});
    CHECK(reference_count(form->dispatch()) == 1);
}

TEST_CASE_FIXTURE(ComFixture, "bytes come back from the compressor and the encoder") {
    const auto compressor = create<IKelosByteCompressor>(L"Kelos.ByteCompressor");
    const auto encoder = create<IKelosByteTextEncoder>(L"Kelos.ByteTextEncoder");
    for (const Bytes& bytes :
         {Bytes{}, Bytes{0}, Bytes{1, 2, 3}, Bytes(100000, 'x'), noise(5000)}) {
        CAPTURE(bytes.size());
        const Variant packed =
            get(compressor, &IKelosByteCompressor::Compress, VARIANT(byte_array(bytes)));
        const Bstr text = get(encoder, &IKelosByteTextEncoder::EncodeBytes, VARIANT(packed));
        CHECK(text.view().find_first_of(L"\r\n ") == std::wstring_view::npos);
        const Variant decoded = get(encoder, &IKelosByteTextEncoder::DecodeText, text.get());
        CHECK(bytes_of(decoded) == bytes_of(packed));
        CHECK(bytes_of(get(compressor, &IKelosByteCompressor::Expand, VARIANT(decoded))) == bytes);
    }
    // Known bytes, so that stored texts stay readable.
    CHECK(
        get(encoder, &IKelosByteTextEncoder::EncodeBytes, VARIANT(byte_array({0xFB, 0xFF, 0, 'A'})))
            .str() == L"+/8AQQ==");
    CHECK(get(encoder, &IKelosByteTextEncoder::EncodeBytes, VARIANT(byte_array({}))).empty());
    CHECK(bytes_of(get(encoder, &IKelosByteTextEncoder::DecodeText, BSTR(nullptr))).empty());
    const Bytes stored = {'K',  'B',  'C',  '1',  3,    0,    0,    0,    0x78, 0x9C,
                          0x4B, 0x4C, 0x4A, 0x06, 0x00, 0x02, 0x4D, 0x01, 0x27};
    CHECK(bytes_of(get(compressor, &IKelosByteCompressor::Expand, VARIANT(byte_array(stored)))) ==
          Bytes{'a', 'b', 'c'});
}

TEST_CASE_FIXTURE(ComFixture, "byte arrays are taken by value and by reference, and nothing else") {
    const auto compressor = create<IKelosByteCompressor>(L"Kelos.ByteCompressor");
    Variant value = byte_array({1, 2, 3});
    VARIANT array_reference{};
    array_reference.vt = VT_BYREF | VT_ARRAY | VT_UI1;
    array_reference.pparray = &value.parray;
    VARIANT variant_reference{};
    variant_reference.vt = VT_BYREF | VT_VARIANT;
    variant_reference.pvarVal = &value;
    const Bytes packed = bytes_of(get(compressor, &IKelosByteCompressor::Compress, VARIANT(value)));
    CHECK(bytes_of(get(compressor, &IKelosByteCompressor::Compress, array_reference)) == packed);
    CHECK(bytes_of(get(compressor, &IKelosByteCompressor::Compress, variant_reference)) == packed);
    // What a client's array variable holds before it is given a size.
    Variant unsized;
    unsized.vt = VT_ARRAY | VT_UI1;
    const Variant nothing = get(compressor, &IKelosByteCompressor::Compress, VARIANT(unsized));
    CHECK(bytes_of(get(compressor, &IKelosByteCompressor::Expand, VARIANT(nothing))).empty());

    Variant numbers;
    numbers.vt = VT_ARRAY | VT_I4;
    numbers.parray = SafeArrayCreateVector(VT_I4, 0, 2);
    SAFEARRAYBOUND bounds[2] = {{2, 0}, {2, 0}};
    Variant matrix;
    matrix.vt = VT_ARRAY | VT_UI1;
    matrix.parray = SafeArrayCreate(VT_UI1, 2, bounds);
    for (const Variant& wrong : {Variant(), Variant(L"text"), Variant(5L), numbers, matrix}) {
        Variant result;
        CHECK(compressor->Compress(wrong, result.put()) == DISP_E_TYPEMISMATCH);
        CHECK(compressor->Expand(wrong, result.put()) == DISP_E_TYPEMISMATCH);
    }
}

TEST_CASE_FIXTURE(ComFixture, "damaged and forged bytes are refused") {
    const auto compressor = create<IKelosByteCompressor>(L"Kelos.ByteCompressor");
    const auto expand = [&](const Bytes& bytes, Variant& result) {
        const HRESULT code = compressor->Expand(byte_array(bytes), result.put());
        CHECK(SUCCEEDED(code) == (result.vt != VT_EMPTY));
        return code;
    };
    const auto refused = [&](const Bytes& bytes) {
        Variant result;
        return expand(bytes, result) == E_INVALIDARG;
    };
    const Bytes original = noise(300);
    const Bytes packed =
        bytes_of(get(compressor, &IKelosByteCompressor::Compress, VARIANT(byte_array(original))));
    for (std::size_t length = 0; length < packed.size(); ++length) {
        CAPTURE(length);
        REQUIRE(refused(Bytes(packed.data(), packed.data() + length)));
    }
    for (std::size_t at = 0; at < packed.size(); ++at) {
        Bytes damaged = packed;
        damaged[at] ^= 0x10;
        CAPTURE(at);
        // A few bits of the format mean nothing; no damage may change what comes out.
        Variant result;
        if (SUCCEEDED(expand(damaged, result))) REQUIRE(bytes_of(result) == original);
    }
    Bytes longer = packed;
    longer.push_back(0);
    CHECK(refused(longer));
    // A header that promises four gigabytes must not make anybody provide them.
    Bytes forged = packed;
    std::fill_n(forged.begin() + 4, 4, std::uint8_t{0xFF});
    CHECK(refused(forged));

    const auto encoder = create<IKelosByteTextEncoder>(L"Kelos.ByteTextEncoder");
    for (const wchar_t* const text : {L"!", L"QUJ", L"QQ==QQ==", L"\x00E4\x00F6", L"===="}) {
        CAPTURE(std::wstring(text));
        const Bstr wrong(text);
        Variant result;
        CHECK(encoder->DecodeText(wrong.get(), result.put()) == E_INVALIDARG);
        CHECK(result.vt == VT_EMPTY);
    }
}
