// The entry points of an in-process server.

#include "server/class_factory.h"
#include "server/registrar.h"

extern "C" {

STDAPI DllGetClassObject(REFCLSID class_id, REFIID interface_id, LPVOID* result) {
    return server::get_class_object(class_id, interface_id, result);
}

STDAPI DllCanUnloadNow() {
    return automation::live_count() == 0 ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
    return server::register_classes(server::Scope::machine);
}

STDAPI DllUnregisterServer() {
    return server::unregister_classes(server::Scope::machine);
}

STDAPI DllInstall(BOOL registers, LPCWSTR command_line) {
    return server::install(registers != FALSE, command_line);
}
}
