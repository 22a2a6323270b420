#include "windows/control/DispatchFacets.h"

#include "windows/com/Boundary.h"
#include "windows/com/ComStep.h"
#include "windows/com/ComText.h"
#include "windows/com/Module.h"

namespace dravik::control {
namespace {

constexpr wchar_t kSource[] = L"DravikPage.DravikPage";

}  // namespace

HRESULT PublicInterface::DeleteSamplesByDistance(BSTR* Character, double* MinDistance, double* MaxDistance,
                                                 short* Count) {
    return entered([&]() -> HRESULT {
        if (Count) *Count = 0;
        if (!Character || !MinDistance || !MaxDistance || !Count) return E_POINTER;
        *Count = state_.screen.dialog().DeleteSamplesByDistance(com::toUtf8(*Character), *MinDistance,
                                                                *MaxDistance);
        changedUnseen();
        return S_OK;
    });
}

HRESULT PublicInterface::HighlightIncluded(BSTR* IncludedChars) {
    return entered([&]() -> HRESULT {
        if (!IncludedChars) return E_POINTER;
        state_.screen.dialog().HighlightIncluded(com::toUtf8(*IncludedChars));
        changedUnseen();
        return S_OK;
    });
}

HRESULT PublicInterface::FontTrainDate(BSTR* Font, BSTR* Date) {
    return entered([&]() -> HRESULT {
        if (Date) *Date = nullptr;
        if (!Font || !Date) return E_POINTER;
        *Date = com::Bstr(state_.screen.dialog().FontTrainDate(com::toUtf8(*Font))).detach();
        return S_OK;
    });
}

HRESULT StepEditorFacet::put_ReadOnly(VARIANT_BOOL Value) {
    return entered([&] {
        state_.screen.setReadOnly(Value != VARIANT_FALSE);
        return S_OK;
    });
}

HRESULT StepEditorFacet::get_ReadOnly(VARIANT_BOOL* Value) {
    return entered([&]() -> HRESULT {
        if (!Value) return E_POINTER;
        *Value = state_.screen.dialog().readOnly() ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    });
}

HRESULT StepEditorFacet::putref_RootStep(IDispatch* Value) {
    return entered([&] {
        try {
            state_.screen.setRootStep(com::stepFromCom(Value));
        } catch (...) {
            state_.screen.dialog().tellFailure("StepEditor_RootStep", currentFailure());
        }
        return S_OK;
    });
}

HRESULT StepEditorFacet::putref_Step(IDispatch* Value) {
    return entered([&] {
        return com::comCall(__uuidof(::StepEditor), kSource, [&] {
            tool::StepPtr step;
            try {
                // The same object again is the same step.
                step =
                    Value && state_.givenStep.get() == Value ? state_.screen.step() : com::stepFromCom(Value);
            } catch (...) {
                return state_.screen.dialog().tellFailure("StepEditor_Step", currentFailure());
            }
            if (state_.screen.setStep(std::move(step))) state_.givenStep = Value;
            changedUnseen();
        });
    });
}

HRESULT StepEditorFacet::get_Step(IDispatch** Value) {
    return entered([&]() -> HRESULT {
        if (!Value) return E_POINTER;
        *Value = com::ComPtr<IDispatch>(state_.givenStep).detach();
        return S_OK;
    });
}

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
