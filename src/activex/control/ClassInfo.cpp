#include "activex/control/ClassInfo.h"

#include "DravikDlgLib.h"

#include "activex/com/Boundary.h"
#include "activex/com/Module.h"

namespace dravik {

HRESULT ClassInfo::GetClassInfo(ITypeInfo** info) {
    return entered([&]() -> HRESULT {
        if (!info) return E_POINTER;
        *info = nullptr;
        return comCall(IID_IProvideClassInfo, L"DravikDlg",
                       [&] { *info = typeInfoOf(CLSID_DravikDlg).detach(); });
    });
}

HRESULT ClassInfo::GetGUID(DWORD kind, GUID* identifier) {
    if (!identifier) return E_POINTER;
    *identifier = kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? DIID___DravikDlg : GUID_NULL;
    return kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? S_OK : E_INVALIDARG;
}

}  // namespace dravik
