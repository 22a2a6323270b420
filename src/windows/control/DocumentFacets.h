// What a host's document keeps of the control: nothing but its extent. Fonts are the tool's affair. The same
// state goes into a stream, a storage and a property bag. And what it shows of the control: the screen drawn
// by itself.
#pragma once

#include "DravikDlgLib.h"
#include "windows/control/Facet.h"

namespace dravik::control {

template <class Interface>
class PersistFacet : public StateFacet<Interface> {
  public:
    using StateFacet<Interface>::StateFacet;

    HRESULT STDMETHODCALLTYPE GetClassID(CLSID* identifier) override {
        if (!identifier) return E_POINTER;
        *identifier = CLSID_DravikDlg;
        return S_OK;
    }
};

class PersistStreamInit : public PersistFacet<IPersistStreamInit> {
  public:
    using PersistFacet::PersistFacet;

    HRESULT STDMETHODCALLTYPE IsDirty() override { return state_.dirty ? S_OK : S_FALSE; }
    HRESULT STDMETHODCALLTYPE Load(LPSTREAM stream) override;
    HRESULT STDMETHODCALLTYPE Save(LPSTREAM stream, BOOL clearDirty) override;
    HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER* size) override;
    HRESULT STDMETHODCALLTYPE InitNew() override { return S_OK; }
};

class PersistStorage : public PersistFacet<IPersistStorage> {
  public:
    using PersistFacet::PersistFacet;

    HRESULT STDMETHODCALLTYPE IsDirty() override { return state_.dirty ? S_OK : S_FALSE; }
    HRESULT STDMETHODCALLTYPE InitNew(IStorage* storage) override;
    HRESULT STDMETHODCALLTYPE Load(IStorage* storage) override;
    HRESULT STDMETHODCALLTYPE Save(IStorage* storage, BOOL sameAsLoad) override;
    HRESULT STDMETHODCALLTYPE SaveCompleted(IStorage* storage) override;
    HRESULT STDMETHODCALLTYPE HandsOffStorage() override { return S_OK; }

  private:
    bool saving_ = false;  // between Save and SaveCompleted nothing is written
};

class PersistPropertyBag : public PersistFacet<IPersistPropertyBag> {
  public:
    using PersistFacet::PersistFacet;

    HRESULT STDMETHODCALLTYPE InitNew() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Load(IPropertyBag* bag, IErrorLog* log) override;
    HRESULT STDMETHODCALLTYPE Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) override;
};

// IViewObject2: the screen drawn by itself into the host's device context: a metafile, a printer, a picture
// in a designer.
class ViewObject : public StateFacet<IViewObject2> {
  public:
    using StateFacet::StateFacet;

    HRESULT STDMETHODCALLTYPE Draw(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device,
                                   HDC information, HDC target, LPCRECTL bounds, LPCRECTL metafileBounds,
                                   BOOL(STDMETHODCALLTYPE* go)(ULONG_PTR), ULONG_PTR goArgument) override;
    HRESULT STDMETHODCALLTYPE GetColorSet(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device,
                                          HDC information, LOGPALETTE** colors) override;
    HRESULT STDMETHODCALLTYPE Freeze(DWORD, LONG, void*, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Unfreeze(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
    HRESULT STDMETHODCALLTYPE GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device,
                                        SIZEL* extent) override;
};

}  // namespace dravik::control
