// What one DLL of ours counts, and the resources that its classes share.
#pragma once

#include <atomic>
#include <string>

#include "automation/com_ptr.h"

namespace automation {

// The handle of the DLL (or program) that this code is linked into.
HMODULE this_module() noexcept;

// Living objects and server locks, over all threads.
long live_count() noexcept;
void lock_module(bool lock) noexcept;

// Bookkeeping of the object base: every object counts from construction to destruction. The first
// one of a thread throws when there is no memory to count it.
void object_born();
void object_died() noexcept;

// Called on a thread when the last of the objects that live on it has died, so that what the
// thread shares among its objects can be let go while COM is certainly still there. Adding a hook
// again changes nothing.
using ThreadIdleHook = void (*)() noexcept;
void add_thread_idle_hook(ThreadIdleHook hook);

// The resources of a module that hold its type libraries: its own, and (if it has one) the library
// that it shares with other modules and that its own refers to.
inline constexpr int own_type_library = 1;
inline constexpr int shared_type_library = 2;

// The full path of this module's file.
std::wstring module_path();

// The type information of an interface or a class, from the type libraries that are this module's
// resources (so no registration is needed). To be asked for by objects: the module keeps it until
// its last object dies. Throws when neither library holds it.
ITypeInfo* type_info(REFGUID id);

// The class of this module's own type library whose default interface this is, or null; kept like
// the type information.
ITypeInfo* class_of_interface(REFIID id);

// Where a member that is called often finds the type information of one interface. Static objects
// only: the module knows them all, and empties them when it lets go of the type libraries.
class TypeInfoSlot {
  public:
    explicit TypeInfoSlot(REFGUID id) noexcept;
    TypeInfoSlot(const TypeInfoSlot&) = delete;
    TypeInfoSlot& operator=(const TypeInfoSlot&) = delete;

    ITypeInfo* get() {
        ITypeInfo* const info = info_.load(std::memory_order_acquire);
        return info ? info : fill();
    }

    static void empty_all() noexcept;

  private:
    ITypeInfo* fill();

    const GUID& id_;
    std::atomic<ITypeInfo*> info_{nullptr};
    TypeInfoSlot* next_ = nullptr;
};

}  // namespace automation
