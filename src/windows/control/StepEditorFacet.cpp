#include "windows/control/StepEditorFacet.h"

#include "windows/com/Boundary.h"
#include "windows/com/ComStep.h"

namespace dravik::control {
namespace {

constexpr wchar_t kSource[] = L"DravikPage.DravikPage";

}  // namespace

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
            state_.screen.setStep(com::stepFromCom(Value));
            given_ = Value;
        });
    });
}

HRESULT StepEditorFacet::get_Step(IDispatch** Value) {
    return entered([&]() -> HRESULT {
        if (!Value) return E_POINTER;
        *Value = state_.screen.dialog().step() ? com::ComPtr<IDispatch>(given_).detach() : nullptr;
        return S_OK;
    });
}

}  // namespace dravik::control
