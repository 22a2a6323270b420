#include "windows/control/ClassInfo.h"

#include "DravikDlgLib.h"

#include "windows/com/Boundary.h"
#include "windows/com/Module.h"

namespace dravik::control {

HRESULT ClassInfo::GetClassInfo(ITypeInfo** info) {
    return entered([&]() -> HRESULT {
        if (!info) return E_POINTER;
        *info = nullptr;
        return com::comCall(IID_IProvideClassInfo, L"DravikDlg",
                            [&] { *info = com::typeInfoOf(CLSID_DravikDlg).detach(); });
    });
}

HRESULT ClassInfo::GetGUID(DWORD kind, GUID* identifier) {
    if (!identifier) return E_POINTER;
    *identifier = kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? DIID___DravikDlg : GUID_NULL;
    return kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? S_OK : E_INVALIDARG;
}

}  // namespace dravik::control
