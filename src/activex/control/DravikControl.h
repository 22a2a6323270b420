// The control DravikDlg as a COM object: one identity for all its interfaces. Lives until the last reference
// is gone, and then ends its screen if the host has not closed it.
#pragma once

#include <windows.h>

#include <atomic>

#include "activex/com/Dispatch.h"
#include "activex/com/Module.h"
#include "activex/control/ClassInfo.h"
#include "activex/control/ConnectionPoints.h"
#include "activex/control/ControlState.h"
#include "activex/control/InPlaceActiveObject.h"
#include "activex/control/InPlaceObject.h"
#include "activex/control/OleControl.h"
#include "activex/control/OleObject.h"
#include "activex/control/Persistence.h"
#include "activex/control/PublicInterface.h"
#include "activex/control/QuickActivation.h"
#include "activex/control/StepEditorFacet.h"
#include "activex/control/ViewObject.h"
#include "activex/control/WatchedScreen.h"

namespace dravik {

class DravikControl final : public IUnknown {
  public:
    // The class's creator: a new control, asked for an interface.
    static HRESULT create(REFIID iid, void** object);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

  private:
    class ErrorInfoSupport : public Facet<ISupportErrorInfo> {
      public:
        using Facet::Facet;
        HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override;
    };

    DravikControl();
    virtual ~DravikControl() = default;

    IUnknown* find(REFIID iid) noexcept;

    ModuleReference module_;
    std::atomic<ULONG> references_ = 1;
    ControlState state_;
    PublicInterface publicInterface_;
    StepEditorFacet stepEditor_;
    Dispatch dispatch_;
    ErrorInfoSupport errorInfo_;
    OleObject oleObject_;
    OleControl oleControl_;
    InPlaceObject inPlaceObject_;
    InPlaceActiveObject inPlaceActiveObject_;
    ViewObject viewObject_;
    PersistStreamInit persistStream_;
    PersistStorage persistStorage_;
    PersistPropertyBag persistPropertyBag_;
    ClassInfo classInfo_;
    ConnectionPoints connectionPoints_;
    QuickActivation quickActivation_;
    WatchedScreen watchedScreen_;
};

}  // namespace dravik
