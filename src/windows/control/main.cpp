// The exports of the control's DLL.
#include <array>

#include "windows/control/DravikControl.h"
#include "windows/server/Registration.h"
#include "windows/server/Server.h"

namespace {

using namespace dravik;
using namespace dravik::control;

constexpr int kToolboxBitmap = 1;

const std::array<server::RegisteredClass, 2>& classes() {
    static const std::array<server::RegisteredClass, 2> all = {
        server::RegisteredClass{.identifier = CLSID_DravikDlg,
                                .programIdentifier = L"DravikDlgLib.DravikDlg",
                                .description = L"Dravik training screen",
                                .library = LIBID_DravikDlgLib,
                                .create = DravikControl::create,
                                .control = server::RegisteredClass::Control{kMiscStatus, kToolboxBitmap}},
        server::embeddedStepClass(),
    };
    return all;
}

}  // namespace

STDAPI DllGetClassObject(REFCLSID identifier, REFIID iid, void** out) {
    return server::classObject(classes(), identifier, iid, out);
}

STDAPI DllCanUnloadNow() {
    return server::canUnloadNow();
}

STDAPI DllRegisterServer() {
    return server::registerServer(classes());
}

STDAPI DllUnregisterServer() {
    return server::unregisterServer(classes());
}

STDAPI DllInstall(BOOL install, LPCWSTR commandLine) {
    return server::installServer(classes(), install != FALSE, commandLine);
}
