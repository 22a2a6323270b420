// The control DravikDlg as a COM object: one identity for all its interfaces. Lives until the last reference
// is gone, and then ends its screen if the host has not closed it.
#pragma once

#include <windows.h>

#include <atomic>

#include "windows/com/Dispatch.h"
#include "windows/com/Module.h"
#include "windows/control/ClassInfo.h"
#include "windows/control/ConnectionPoints.h"
#include "windows/control/ControlState.h"
#include "windows/control/InPlaceActiveObject.h"
#include "windows/control/InPlaceObject.h"
#include "windows/control/OleControl.h"
#include "windows/control/OleObject.h"
#include "windows/control/Persistence.h"
#include "windows/control/PublicInterface.h"
#include "windows/control/QuickActivation.h"
#include "windows/control/StepEditorFacet.h"
#include "windows/control/ViewObject.h"

namespace dravik::control {

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

    com::ModuleReference module_;
    std::atomic<ULONG> references_ = 1;
    ControlState state_;
    PublicInterface publicInterface_;
    StepEditorFacet stepEditor_;
    com::Dispatch dispatch_;
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
};

}  // namespace dravik::control
