// Opens the progress form as a walk at 40 per cent shows it, and writes a picture of its window.
//
//     form_picture de|en FILE.png
#include <cstdio>
#include <memory>
#include <string_view>

#include "automation/call.h"
#include "automation/dispatch.h"
#include "hostkit.h"
#include "tessera.h"

#include <wincodec.h>

namespace {

using automation::Bstr;
using automation::call;
using automation::check;
using automation::ComPtr;
using automation::get;

constexpr DWORD drawing_milliseconds = 500;

struct BitmapDeleter {
    void operator()(HBITMAP__* bitmap) const noexcept { DeleteObject(bitmap); }
};
using Bitmap = std::unique_ptr<HBITMAP__, BitmapDeleter>;

// Lets every window draw itself.
void handle_messages() {
    const ULONGLONG end = GetTickCount64() + drawing_milliseconds;
    MSG message;
    while (GetTickCount64() < end) {
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
        Sleep(10);
    }
}

Bitmap picture_of(HWND window) {
    RECT area;
    GetWindowRect(window, &area);
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    const HDC source = GetWindowDC(window);
    const HDC target = CreateCompatibleDC(source);
    Bitmap bitmap(CreateCompatibleBitmap(source, width, height));
    const HGDIOBJ old = SelectObject(target, bitmap.get());
    BitBlt(target, 0, 0, width, height, source, 0, 0, SRCCOPY);
    SelectObject(target, old);
    DeleteDC(target);
    ReleaseDC(window, source);
    return bitmap;
}

void write_png(HBITMAP bitmap, const wchar_t* path) {
    ComPtr<IWICImagingFactory> factory;
    check(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                           __uuidof(IWICImagingFactory), reinterpret_cast<void**>(factory.put())));
    ComPtr<IWICBitmap> pixels;
    check(factory->CreateBitmapFromHBITMAP(bitmap, nullptr, WICBitmapIgnoreAlpha, pixels.put()));
    ComPtr<IWICStream> stream;
    check(factory->CreateStream(stream.put()));
    check(stream->InitializeFromFilename(path, GENERIC_WRITE));
    ComPtr<IWICBitmapEncoder> encoder;
    check(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, encoder.put()));
    check(encoder->Initialize(stream.get(), WICBitmapEncoderNoCache));
    ComPtr<IWICBitmapFrameEncode> frame;
    check(encoder->CreateNewFrame(frame.put(), nullptr));
    check(frame->Initialize(nullptr));
    check(frame->WriteSource(pixels.get(), nullptr));
    check(frame->Commit());
    check(encoder->Commit());
}

HWND shown_form(const ComPtr<IHostKitService>& service) {
    const auto application = get(service, &IKelosService::get_Application);
    const auto windows =
        get(application, &IKelosApplication::get_WindowService).as<IHostKitWindowService>();
    const auto forms = get(windows, &IHostKitWindowService::get_Forms);
    const auto form = get(forms, &IHostKitForms::get_Item, 1);
    return static_cast<HWND>(LongToHandle(get(form, &IHostKitForm::get_Window)));
}

void take_picture(HostKitLanguage language, const wchar_t* path) {
    const auto service = automation::create_object<IHostKitService>(L"Kelos.Service");
    call(service, &IHostKitService::put_Language, language);
    const auto progress = automation::create_object<ITesseraProgress>(L"Tessera.Progress");
    const Bstr key(L"~018a0 Abfrage lesen...");
    const Bstr caption = get(service, &IKelosService::TranslateText, key.get());
    call(progress, &ITesseraProgress::put_Caption, caption.get());
    call(progress, &ITesseraProgress::put_Percentage, short{40});
    const HWND form = shown_form(service);
    handle_messages();
    write_png(picture_of(form).get(), path);
    call(progress, &ITesseraProgress::StopProcess);
}

}  // namespace

extern "C" int wmain(int count, wchar_t** arguments) {
    const std::wstring_view language = count == 3 ? arguments[1] : L"";
    if (language != L"de" && language != L"en") {
        std::fputs("usage: form_picture de|en FILE.png\n", stderr);
        return 2;
    }
    int result = 1;
    if (FAILED(OleInitialize(nullptr))) return result;
    try {
        take_picture(language == L"de" ? hklGerman : hklEnglish, arguments[2]);
        result = 0;
    } catch (...) {
        const auto error = automation::current_error();
        std::fprintf(stderr, "form_picture: error %08lx: %ls\n",
                     static_cast<unsigned long>(error.code), error.description.str().c_str());
    }
    OleUninitialize();
    return result;
}
