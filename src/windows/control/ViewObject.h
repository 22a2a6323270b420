// IViewObject2: the screen drawn by itself into the host's device context: a metafile, a printer, a picture
// in a designer.
#pragma once

#include "windows/control/ControlState.h"
#include "windows/control/Facet.h"

namespace dravik::control {

class ViewObject : public Facet<IViewObject2> {
  public:
    ViewObject(IUnknown& control, ControlState& state) : Facet(control), state_(state) {}

    HRESULT STDMETHODCALLTYPE Draw(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device,
                                   HDC information, HDC target, LPCRECTL bounds, LPCRECTL metafileBounds,
                                   BOOL(STDMETHODCALLTYPE* go)(ULONG_PTR), ULONG_PTR goArgument) override;
    HRESULT STDMETHODCALLTYPE GetColorSet(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device,
                                          HDC information, LOGPALETTE** colors) override;
    HRESULT STDMETHODCALLTYPE Freeze(DWORD aspect, LONG index, void* aspectInfo, DWORD* freeze) override;
    HRESULT STDMETHODCALLTYPE Unfreeze(DWORD freeze) override;
    HRESULT STDMETHODCALLTYPE SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
    HRESULT STDMETHODCALLTYPE GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device,
                                        SIZEL* extent) override;

  private:
    ControlState& state_;
};

}  // namespace dravik::control
