// The exports of the control's DLL.
#include <array>

#include "activex/control/DravikControl.h"
// Behind the Windows headers
#include "activex/server/Registration.h"
#include "activex/server/Server.h"

namespace {

using namespace dravik;

constexpr int kToolboxBitmap = 1;

const std::array<RegisteredClass, 2>& classes() {
    static const std::array<RegisteredClass, 2> all = {
        RegisteredClass{.identifier = CLSID_DravikDlg,
                        .programIdentifier = L"DravikDlgLib.DravikDlg",
                        .description = L"Dravik training screen",
                        .library = LIBID_DravikDlgLib,
                        .create = DravikControl::create,
                        .control = RegisteredClass::Control{kMiscStatus, kToolboxBitmap}},
        embeddedStepClass(),
    };
    return all;
}

}  // namespace

STDAPI DllGetClassObject(REFCLSID identifier, REFIID iid, void** out) {
    return classObject(classes(), identifier, iid, out);
}

STDAPI DllCanUnloadNow() {
    return canUnloadNow();
}

STDAPI DllRegisterServer() {
    return registerServer(classes());
}

STDAPI DllUnregisterServer() {
    return unregisterServer(classes());
}

STDAPI DllInstall(BOOL install, LPCWSTR commandLine) {
    return installServer(classes(), install != FALSE, commandLine);
}
