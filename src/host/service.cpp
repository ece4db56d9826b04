#include "host/service.h"

#include "automation/dispatch.h"
#include "automation/thread_kept.h"
#include "host/program_names.h"

namespace tessera {

using automation::Bstr;
using automation::ComPtr;

namespace {

struct ServiceHolder {
    ComPtr<IKelosService> service =
        automation::create_object<IKelosService>(program_names::service);
};

}  // namespace

ComPtr<IKelosService> host_service() {
    return automation::ThreadKept<ServiceHolder>::get().service;
}

Bstr translate(const wchar_t* text_key) {
    const Bstr key(text_key);
    return automation::get(host_service(), &IKelosService::TranslateText, key.get());
}

void show_message(std::wstring_view text, long style, std::wstring_view title) {
    const Bstr message(text);
    const Bstr caption(title);
    automation::get(host_service(), &IKelosService::ShowMessage, message.get(), style,
                    caption.get());
}

void trace(const Bstr& line) {
    automation::call(host_service(), &IKelosService::Trace, line.get());
}

}  // namespace tessera
