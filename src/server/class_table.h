// The one table of a DLL's creatable classes: it drives the class factory, registration and
// unregistration.
#pragma once

#include <span>

#include "automation/object.h"

namespace server {

// Creates the object and hands out the interface; may throw.
using Factory = automation::ComPtr<IUnknown> (*)();

struct ClassEntry {
    const wchar_t* program_name;  // version-independent; the version-dependent one adds ".1"
    const wchar_t* description;
    CLSID class_id;
    Factory create;
};

// Defined once by every DLL that links this library.
std::span<const ClassEntry> module_classes() noexcept;

// The factory for a table entry whose class needs no arguments.
template <class Class>
automation::ComPtr<IUnknown> create() {
    return automation::make<Class>()->main_interface();
}

}  // namespace server
