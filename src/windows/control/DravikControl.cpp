#include "windows/control/DravikControl.h"

#include <new>

namespace dravik::control {

HRESULT DravikControl::create(REFIID iid, void** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    const win32::Entry entry;
    try {
        com::ComPtr<DravikControl> control = com::ComPtr<DravikControl>::attach(new DravikControl);
        return control->QueryInterface(iid, object);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_FAIL;
    }
}

DravikControl::DravikControl()
    : state_(com::thisModule()),
      publicInterface_(*this, state_, dispatch_),
      stepEditor_(*this, state_, dispatch_),
      dispatch_({{__uuidof(_DravikDlg), &publicInterface_}, {__uuidof(::StepEditor), &stepEditor_}}),
      errorInfo_(*this),
      oleObject_(*this, state_),
      oleControl_(*this, state_),
      inPlaceObject_(*this, state_),
      inPlaceActiveObject_(*this, state_),
      viewObject_(*this, state_),
      persistStream_(*this, state_),
      persistStorage_(*this, state_),
      persistPropertyBag_(*this, state_),
      classInfo_(*this),
      connectionPoints_(*this),
      quickActivation_(*this, state_, oleObject_, connectionPoints_) {
    state_.activation.setActiveObject(&inPlaceActiveObject_);
}

IUnknown* DravikControl::find(REFIID iid) noexcept {
    struct Entry {
        const IID& iid;
        IUnknown* object;
    };
    const Entry entries[] = {
        {IID_IUnknown, this},
        {IID_IDispatch, &publicInterface_},
        {__uuidof(_DravikDlg), &publicInterface_},
        {__uuidof(::StepEditor), &stepEditor_},
        {IID_ISupportErrorInfo, &errorInfo_},
        {IID_IOleObject, &oleObject_},
        {IID_IOleControl, &oleControl_},
        {IID_IOleWindow, &inPlaceObject_},
        {IID_IOleInPlaceObject, &inPlaceObject_},
        {IID_IOleInPlaceActiveObject, &inPlaceActiveObject_},
        {IID_IViewObject, &viewObject_},
        {IID_IViewObject2, &viewObject_},
        {IID_IPersist, &persistStream_},
        {IID_IPersistStreamInit, &persistStream_},
        {IID_IPersistStorage, &persistStorage_},
        {IID_IPersistPropertyBag, &persistPropertyBag_},
        {IID_IProvideClassInfo, &classInfo_},
        {IID_IProvideClassInfo2, &classInfo_},
        {IID_IConnectionPointContainer, &connectionPoints_},
        {IID_IQuickActivate, &quickActivation_},
    };
    for (const Entry& entry : entries)
        if (entry.iid == iid) return entry.object;
    return nullptr;
}

HRESULT DravikControl::QueryInterface(REFIID iid, void** object) {
    if (!object) return E_POINTER;
    IUnknown* found = find(iid);
    *object = found;
    if (!found) return E_NOINTERFACE;
    found->AddRef();
    return S_OK;
}

ULONG DravikControl::AddRef() {
    return ++references_;
}

ULONG DravikControl::Release() {
    const ULONG left = --references_;
    if (left != 0) return left;
    // Ending calls the host, which may count the dying object up and down again.
    references_ = 1;
    {
        const win32::Entry entry;
        state_.end();
        state_.activation.deactivate();
        state_.site.set(nullptr);
    }
    // A method of one of its parts may be on the stack.
    win32::Entry::whenOutside([this] { delete this; });
    return 0;
}

HRESULT DravikControl::ErrorInfoSupport::InterfaceSupportsErrorInfo(REFIID iid) {
    return iid == __uuidof(_DravikDlg) || iid == __uuidof(::StepEditor) ? S_OK : S_FALSE;
}

}  // namespace dravik::control
