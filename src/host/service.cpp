#include "host/service.h"

#include "automation/dispatch.h"
#include "automation/module.h"
#include "host/program_names.h"

namespace tessera {

using automation::Bstr;
using automation::ComPtr;

namespace {

// A plain pointer: at thread exit COM may be gone, so that no destructor may run then. The hook
// below releases it while the thread still lives.
thread_local IKelosService* thread_service = nullptr;

void release_thread_service() noexcept {
    if (IKelosService* const service = std::exchange(thread_service, nullptr)) service->Release();
}

}  // namespace

ComPtr<IKelosService> host_service() {
    if (!thread_service) {
        automation::add_thread_idle_hook(release_thread_service);
        auto service = automation::create_object<IKelosService>(program_names::service);
        thread_service = service.detach();
    }
    return thread_service;
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

void trace(std::wstring_view text) {
    const Bstr line(text);
    automation::call(host_service(), &IKelosService::Trace, line.get());
}

}  // namespace tessera
