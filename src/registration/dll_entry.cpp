// The entry points of an in-process server.

#include "registration/class_factory.h"
#include "registration/registrar.h"

extern "C" {

STDAPI DllGetClassObject(REFCLSID class_id, REFIID interface_id, LPVOID* result) {
    return registration::get_class_object(class_id, interface_id, result);
}

STDAPI DllCanUnloadNow() {
    return automation::live_count() == 0 ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
    return registration::register_classes();
}

STDAPI DllUnregisterServer() {
    return registration::unregister_classes();
}
}
