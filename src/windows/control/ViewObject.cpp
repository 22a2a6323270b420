#include "windows/control/ViewObject.h"

namespace dravik::control {

HRESULT ViewObject::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC target, LPCRECTL bounds,
                         LPCRECTL, BOOL(STDMETHODCALLTYPE*)(ULONG_PTR), ULONG_PTR) {
    return entered([&]() -> HRESULT {
        if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
        if (!target || !bounds) return E_INVALIDARG;
        const RECT place{bounds->left, bounds->top, bounds->right, bounds->bottom};
        if (win32::FormPage* page = state_.activation.page()) {
            page->draw(target, place);
        } else {
            UnseenPage unseen(state_);
            RECT natural{0, 0, 0, 0};
            const SIZE liked = unseen.page().preferredSize();
            natural.right = liked.cx;
            natural.bottom = liked.cy;
            unseen.page().setBounds(natural);
            unseen.page().draw(target, place);
        }
        return S_OK;
    });
}

HRESULT ViewObject::GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** colors) {
    if (!colors) return E_POINTER;
    *colors = nullptr;
    return S_FALSE;
}

HRESULT ViewObject::Freeze(DWORD, LONG, void*, DWORD*) {
    return E_NOTIMPL;
}

HRESULT ViewObject::Unfreeze(DWORD) {
    return E_NOTIMPL;
}

HRESULT ViewObject::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
    return entered([&] {
        state_.viewSink = sink;
        state_.viewAspects = aspects;
        state_.viewFlags = flags;
        if (sink && (flags & ADVF_PRIMEFIRST) != 0) {
            const com::ComPtr<IAdviseSink> primed(sink);
            if ((flags & ADVF_ONLYONCE) != 0) state_.viewSink = nullptr;
            primed->OnViewChange(DVASPECT_CONTENT, -1);
        }
        return S_OK;
    });
}

HRESULT ViewObject::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
    if (aspects) *aspects = state_.viewAspects;
    if (flags) *flags = state_.viewFlags;
    if (sink) {
        *sink = state_.viewSink.get();
        if (*sink) (*sink)->AddRef();
    }
    return S_OK;
}

HRESULT ViewObject::GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, SIZEL* extent) {
    return entered([&]() -> HRESULT {
        if (!extent) return E_POINTER;
        if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
        *extent = state_.extent();
        return S_OK;
    });
}

}  // namespace dravik::control
