#include "automation/module.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <map>
#include <mutex>
#include <stdexcept>
#include <string>
#include <utility>

#include "automation/error.h"
#include "automation/thread_slot.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace automation {
namespace {

// Needs no memory, so that an object can always die.
class SlimLock {
  public:
    void lock() noexcept { AcquireSRWLockExclusive(&lock_); }
    void unlock() noexcept { ReleaseSRWLockExclusive(&lock_); }

  private:
    SRWLOCK lock_ = SRWLOCK_INIT;
};

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

class TypeLibraries {
  public:
    // The shared library is loaded first and kept: a reference to it is then resolved by the loaded
    // one where it is neither registered nor named by a manifest.
    TypeLibraries() {
        if (FindResourceW(this_module(), MAKEINTRESOURCEW(shared_type_library), L"TYPELIB"))
            shared_ = load(shared_type_library);
        own_ = load(own_type_library);
    }

    ITypeInfo* info(REFGUID id) {
        ComPtr<ITypeInfo>& kept = infos_[id];
        if (!kept && !(shared_ && SUCCEEDED(shared_->GetTypeInfoOfGuid(id, kept.put()))))
            check(own_->GetTypeInfoOfGuid(id, kept.put()));
        return kept.get();
    }

    ITypeInfo* class_of(REFIID id) {
        const auto known = classes_.find(id);
        if (known != classes_.end()) return known->second.get();
        ComPtr<ITypeInfo> found;
        for (UINT i = 0; i < own_->GetTypeInfoCount() && !found; ++i)
            if (const ComPtr<ITypeInfo> coclass = coclass_at(i))
                if (guid_of(default_interface(coclass.get()).get()) == id) found = coclass;
        return classes_.emplace(id, std::move(found)).first->second.get();
    }

  private:
    // Nothing for a type that is no class.
    ComPtr<ITypeInfo> coclass_at(UINT index) const {
        TYPEKIND kind;
        ComPtr<ITypeInfo> info;
        check(own_->GetTypeInfoType(index, &kind));
        if (kind == TKIND_COCLASS) check(own_->GetTypeInfo(index, info.put()));
        return info;
    }

    // Every class of ours has one interface.
    static ComPtr<ITypeInfo> default_interface(ITypeInfo* coclass) {
        HREFTYPE reference = 0;
        ComPtr<ITypeInfo> info;
        check(coclass->GetRefTypeOfImplType(0, &reference));
        check(coclass->GetRefTypeInfo(reference, info.put()));
        return info;
    }

    static GUID guid_of(ITypeInfo* info) {
        TYPEATTR* attributes = nullptr;
        check(info->GetTypeAttr(&attributes));
        const GUID id = attributes->guid;
        info->ReleaseTypeAttr(attributes);
        return id;
    }

    static ComPtr<ITypeLib> load(int resource) {
        ComPtr<ITypeLib> library;
        const std::wstring place = module_path() + L"\\" + std::to_wstring(resource);
        check(LoadTypeLibEx(place.c_str(), REGKIND_NONE, library.put()));
        return library;
    }

    ComPtr<ITypeLib> shared_;
    ComPtr<ITypeLib> own_;
    std::map<GUID, ComPtr<ITypeInfo>, GuidOrder> infos_;
    std::map<GUID, ComPtr<ITypeInfo>, GuidOrder> classes_;  // by interface
};

// Kept while objects live and no longer: the platform keeps the module's file open for a loaded
// library, even when the module is gone. Never released at unloading time, when COM may be gone.
SlimLock libraries_lock;
TypeLibraries* libraries = nullptr;
std::atomic<TypeInfoSlot*> first_slot{nullptr};

void run_thread_idle_hooks() noexcept {
    for (const auto& place : thread_idle_hooks)
        if (const ThreadIdleHook hook = place.load(std::memory_order_acquire)) hook();
}

void release_libraries() noexcept {
    TypeInfoSlot::empty_all();
    delete std::exchange(libraries, nullptr);
}

// No object is born while the last one takes the libraries along: who counts from or to less than
// two objects has the lock.
void count_object() noexcept {
    long count = live_objects.load(std::memory_order_acquire);
    while (count > 1)
        if (live_objects.compare_exchange_weak(count, count + 1, std::memory_order_acq_rel)) return;
    const std::lock_guard lock(libraries_lock);
    live_objects.fetch_add(1, std::memory_order_acq_rel);
}

void count_object_out() noexcept {
    long count = live_objects.load(std::memory_order_acquire);
    while (count > 1)
        if (live_objects.compare_exchange_weak(count, count - 1, std::memory_order_acq_rel)) return;
    const std::lock_guard lock(libraries_lock);
    if (live_objects.load(std::memory_order_acquire) == 1) release_libraries();
    live_objects.fetch_sub(1, std::memory_order_acq_rel);
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
    lock ? count_object() : count_object_out();
}

void object_born() {
    count_thread_objects(+1);
    count_object();
}

void object_died() noexcept {
    if (count_thread_objects(-1) == 0) run_thread_idle_hooks();
    count_object_out();
}

void add_thread_idle_hook(ThreadIdleHook hook) {
    for (auto& place : thread_idle_hooks) {
        ThreadIdleHook present = nullptr;
        if (place.compare_exchange_strong(present, hook) || present == hook) return;
    }
    throw std::length_error("thread idle hooks");
}

ITypeInfo* type_info(REFGUID id) {
    const std::lock_guard lock(libraries_lock);
    if (!libraries) libraries = new TypeLibraries;
    return libraries->info(id);
}

ITypeInfo* class_of_interface(REFIID id) {
    const std::lock_guard lock(libraries_lock);
    if (!libraries) libraries = new TypeLibraries;
    return libraries->class_of(id);
}

TypeInfoSlot::TypeInfoSlot(REFGUID id) noexcept : id_(id), next_(first_slot.load()) {
    while (!first_slot.compare_exchange_weak(next_, this)) {
    }
}

ITypeInfo* TypeInfoSlot::fill() {
    ITypeInfo* const info = type_info(id_);
    info_.store(info, std::memory_order_release);
    return info;
}

void TypeInfoSlot::empty_all() noexcept {
    for (TypeInfoSlot* slot = first_slot.load(); slot; slot = slot->next_)
        slot->info_.store(nullptr, std::memory_order_release);
}

}  // namespace automation
