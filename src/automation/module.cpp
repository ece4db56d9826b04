#include "automation/module.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <map>
#include <mutex>
#include <stdexcept>
#include <string>

#include "automation/error.h"
#include "automation/thread_slot.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace automation {
namespace {

std::atomic<long> live_objects{0};
// One for each kind of thing that threads share; filled from the front.
std::array<std::atomic<ThreadIdleHook>, 8> thread_idle_hooks{};

// Answers the number of the thread's living objects with the change.
std::intptr_t count_thread_objects(int change) {
    static const ThreadSlot slot;
    const auto count = reinterpret_cast<std::intptr_t>(slot.get()) + change;
    slot.set(reinterpret_cast<void*>(count));
    return count;
}

struct GuidOrder {
    bool operator()(const GUID& left, const GUID& right) const noexcept {
        return std::memcmp(&left, &right, sizeof(GUID)) < 0;
    }
};

// Lives as long as the module and is never released: at unloading time COM may be gone already.
class TypeLibrary {
  public:
    static TypeLibrary& instance() {
        static TypeLibrary* const library = new TypeLibrary;
        return *library;
    }

    ITypeInfo* info(REFGUID id) {
        const std::lock_guard lock(mutex_);
        ITypeInfo*& cached = infos_[id];
        if (!cached && !(shared_ && SUCCEEDED(shared_->GetTypeInfoOfGuid(id, &cached))))
            check(own_->GetTypeInfoOfGuid(id, &cached));
        return cached;
    }

    ITypeInfo* class_of(REFIID id) {
        for (UINT i = 0; i < own_->GetTypeInfoCount(); ++i) {
            TYPEKIND kind;
            check(own_->GetTypeInfoType(i, &kind));
            if (kind != TKIND_COCLASS) continue;
            ComPtr<ITypeInfo> info;
            check(own_->GetTypeInfo(i, info.put()));
            if (guid_of(default_interface(info.get()).get()) == id) return info.detach();
        }
        return nullptr;
    }

  private:
    static GUID guid_of(ITypeInfo* info) {
        TYPEATTR* attributes = nullptr;
        check(info->GetTypeAttr(&attributes));
        const GUID id = attributes->guid;
        info->ReleaseTypeAttr(attributes);
        return id;
    }

    // Every class of ours has one interface.
    static ComPtr<ITypeInfo> default_interface(ITypeInfo* coclass) {
        HREFTYPE reference = 0;
        ComPtr<ITypeInfo> info;
        check(coclass->GetRefTypeOfImplType(0, &reference));
        check(coclass->GetRefTypeInfo(reference, info.put()));
        return info;
    }

    // The shared library is loaded first and kept: a reference to it is then resolved by the loaded
    // one where it is neither registered nor named by a manifest.
    TypeLibrary() {
        if (FindResourceW(this_module(), MAKEINTRESOURCEW(shared_type_library), L"TYPELIB"))
            shared_ = load(shared_type_library);
        own_ = load(own_type_library);
    }

    static ITypeLib* load(int resource) {
        ITypeLib* library = nullptr;
        const std::wstring place = module_path() + L"\\" + std::to_wstring(resource);
        check(LoadTypeLibEx(place.c_str(), REGKIND_NONE, &library));
        return library;
    }

    std::mutex mutex_;
    ITypeLib* shared_ = nullptr;
    ITypeLib* own_ = nullptr;
    std::map<GUID, ITypeInfo*, GuidOrder> infos_;
};

void run_thread_idle_hooks() noexcept {
    for (const auto& place : thread_idle_hooks)
        if (const ThreadIdleHook hook = place.load(std::memory_order_acquire)) hook();
}

}  // namespace

HMODULE this_module() noexcept {
    return reinterpret_cast<HMODULE>(&__ImageBase);
}

std::wstring module_path() {
    std::wstring path(MAX_PATH, L'\0');
    DWORD length;
    while ((length = GetModuleFileNameW(this_module(), path.data(),
                                        static_cast<DWORD>(path.size()))) == path.size())
        path.resize(path.size() * 2);
    path.resize(length);
    return path;
}

long live_count() noexcept {
    return live_objects.load(std::memory_order_acquire);
}

void lock_module(bool lock) noexcept {
    live_objects.fetch_add(lock ? 1 : -1, std::memory_order_acq_rel);
}

void object_born() {
    count_thread_objects(+1);
    live_objects.fetch_add(1, std::memory_order_relaxed);
}

void object_died() noexcept {
    if (count_thread_objects(-1) == 0) run_thread_idle_hooks();
    live_objects.fetch_sub(1, std::memory_order_acq_rel);
}

void add_thread_idle_hook(ThreadIdleHook hook) {
    for (auto& place : thread_idle_hooks) {
        ThreadIdleHook present = nullptr;
        if (place.compare_exchange_strong(present, hook) || present == hook) return;
    }
    throw std::length_error("thread idle hooks");
}

ITypeInfo* type_info(REFGUID id) {
    return TypeLibrary::instance().info(id);
}

ITypeInfo* class_of_interface(REFIID id) {
    return TypeLibrary::instance().class_of(id);
}

}  // namespace automation
