// A COM server of the embedded step alone, beside the tests that register it.
#include <array>

#include "activex/server/Registration.h"
#include "activex/server/Server.h"

namespace {

std::span<const dravik::RegisteredClass> classes() {
    static const std::array all = {dravik::embeddedStepClass()};
    return all;
}

}  // namespace

extern "C" {
HRESULT __stdcall DllGetClassObject(REFCLSID identifier, REFIID iid, void** out) {
    return dravik::classObject(classes(), identifier, iid, out);
}
HRESULT __stdcall DllCanUnloadNow() {
    return dravik::canUnloadNow();
}
HRESULT __stdcall DllRegisterServer() {
    return dravik::registerServer(classes());
}
HRESULT __stdcall DllUnregisterServer() {
    return dravik::unregisterServer(classes());
}
HRESULT __stdcall DllInstall(BOOL install, LPCWSTR commandLine) {
    return dravik::installServer(classes(), install, commandLine);
}
}
