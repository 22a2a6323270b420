// What a host's document keeps of the control: nothing but its extent. Fonts are the tool's affair. The same
// state goes into a stream, a storage and a property bag.
#pragma once

#include <ocidl.h>

#include "windows/control/ControlState.h"
#include "windows/control/Facet.h"

namespace dravik::control {

// Stream and storage hold four 32-bit little-endian numbers: a mark, the version of the layout, width and
// height in hundredths of a millimetre. A damaged state is refused and changes nothing.
HRESULT loadState(IStream& stream, ControlState& state);
HRESULT saveState(IStream& stream, ControlState& state, bool clearDirty);

class PersistStreamInit : public Facet<IPersistStreamInit> {
  public:
    PersistStreamInit(IUnknown& control, ControlState& state) : Facet(control), state_(state) {}

    HRESULT STDMETHODCALLTYPE GetClassID(CLSID* identifier) override;
    HRESULT STDMETHODCALLTYPE IsDirty() override;
    HRESULT STDMETHODCALLTYPE Load(LPSTREAM stream) override;
    HRESULT STDMETHODCALLTYPE Save(LPSTREAM stream, BOOL clearDirty) override;
    HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER* size) override;
    HRESULT STDMETHODCALLTYPE InitNew() override;

  private:
    ControlState& state_;
};

class PersistStorage : public Facet<IPersistStorage> {
  public:
    PersistStorage(IUnknown& control, ControlState& state) : Facet(control), state_(state) {}

    HRESULT STDMETHODCALLTYPE GetClassID(CLSID* identifier) override;
    HRESULT STDMETHODCALLTYPE IsDirty() override;
    HRESULT STDMETHODCALLTYPE InitNew(IStorage* storage) override;
    HRESULT STDMETHODCALLTYPE Load(IStorage* storage) override;
    HRESULT STDMETHODCALLTYPE Save(IStorage* storage, BOOL sameAsLoad) override;
    HRESULT STDMETHODCALLTYPE SaveCompleted(IStorage* storage) override;
    HRESULT STDMETHODCALLTYPE HandsOffStorage() override;

  private:
    ControlState& state_;
    bool saving_ = false;  // between Save and SaveCompleted nothing is written
};

class PersistPropertyBag : public Facet<IPersistPropertyBag> {
  public:
    PersistPropertyBag(IUnknown& control, ControlState& state) : Facet(control), state_(state) {}

    HRESULT STDMETHODCALLTYPE GetClassID(CLSID* identifier) override;
    HRESULT STDMETHODCALLTYPE InitNew() override;
    HRESULT STDMETHODCALLTYPE Load(IPropertyBag* bag, IErrorLog* log) override;
    HRESULT STDMETHODCALLTYPE Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) override;

  private:
    ControlState& state_;
};

}  // namespace dravik::control
